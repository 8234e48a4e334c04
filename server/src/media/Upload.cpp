#include "media/Upload.h"

#include "accounts/Accounts.h"
#include "core/Auth.h"
#include "core/Envelope.h"

#include <httplib.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <fstream>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace ekinora::server::media {

namespace fs = std::filesystem;

namespace {

// The commands whose parameters may come with a picture.
const std::set<std::string> TakesPictures = {"surveys/submit", "subject/message/send"};

fs::path uploadsFolder(Database& db) {
    const std::string& path = db.path();
    if (path.empty() || path == ":memory:" || path.rfind("file:", 0) == 0)
        return fs::temp_directory_path() /
               ("ekinora-uploads-" + std::to_string(::getpid()) + "-" + std::to_string(reinterpret_cast<std::uintptr_t>(&db)));
    return fs::absolute(fs::path(path)).parent_path() / "uploads";
}

std::string randomName(const char* extension) {
    static thread_local std::mt19937_64 random{std::random_device{}()};
    char text[40];
    std::snprintf(text, sizeof text, "%016llx%016llx", static_cast<unsigned long long>(random()),
                  static_cast<unsigned long long>(random()));
    return std::string(text) + extension;
}

// A picture by its first bytes: JPEG or PNG; nullptr for anything else.
const char* pictureExtension(const std::string& bytes) {
    if (bytes.size() > 3 && static_cast<unsigned char>(bytes[0]) == 0xFF && static_cast<unsigned char>(bytes[1]) == 0xD8 &&
        static_cast<unsigned char>(bytes[2]) == 0xFF)
        return ".jpg";
    if (bytes.rfind("\x89PNG\r\n\x1a\n", 0) == 0) return ".png";
    return nullptr;
}

// An MP4 or QuickTime video by its first box ("ftyp" after the box size); nullptr otherwise.
const char* videoExtension(const std::string& bytes) {
    if (bytes.size() > 12 && bytes.compare(4, 4, "ftyp") == 0) return ".mp4";
    return nullptr;
}

// The conversation message is the one command that takes a video, with its preview beside it.
bool takesVideo(const std::string& command) { return command == "subject/message/send"; }

bool validName(const std::string& name) {
    if (name.size() != 36) return false;
    for (size_t i = 0; i < 32; ++i)
        if (!std::isxdigit(static_cast<unsigned char>(name[i]))) return false;
    return name.substr(32) == ".jpg" || name.substr(32) == ".png" || name.substr(32) == ".mp4";
}

const char* contentType(const std::string& name) {
    if (name.substr(32) == ".png") return "image/png";
    if (name.substr(32) == ".mp4") return "video/mp4";
    return "image/jpeg";
}

} // namespace

std::string uploadUrl(const std::string& baseUrl, const std::string& name) {
    return baseUrl + UploadedPrefix + name;
}

namespace {

// One part of the form as it arrives: a text field kept in memory, a file written to disk as it comes.
struct IncomingPart {
    std::string name;
    bool file = false;
    std::string text;    // a field's value, or a file's first bytes (enough to know its kind)
    fs::path path;       // where a file is being written
    std::ofstream out;
    std::uint64_t size = 0;
};

constexpr size_t FieldLimit = 64 * 1024;
constexpr size_t SniffBytes = 16;

} // namespace

Json upload(const Dispatch& dispatch, Database& db, const httplib::Request& req, const httplib::ContentReader& reader,
            const std::string& baseUrl) {
    if (!req.is_multipart_form_data()) {
        reader([](const char*, size_t) { return true; });
        return envelope::rejection({{"upload", "Gönderilen form okunamadı."}});
    }
    const fs::path folder = uploadsFolder(db);
    std::error_code error;
    fs::create_directories(folder, error);

    // The parts stream in; files go to disk under temporary names until the command takes them.
    std::vector<std::unique_ptr<IncomingPart>> parts;
    bool tooLarge = false;
    std::uint64_t total = 0;
    const bool read = reader(
        [&](const httplib::MultipartFormData& header) {
            auto part = std::make_unique<IncomingPart>();
            part->name = header.name;
            part->file = !header.filename.empty();
            if (part->file && (header.name == "upload[0]" || header.name == "upload[1]")) {
                part->path = folder / ("incoming-" + randomName(".part"));
                part->out.open(part->path, std::ios::binary);
            }
            parts.push_back(std::move(part));
            return true;
        },
        [&](const char* data, size_t length) {
            IncomingPart& part = *parts.back();
            total += length;
            if (total > UploadLimit) {
                tooLarge = true;
                return false;
            }
            if (!part.file) {
                if (part.text.size() + length > FieldLimit) return tooLarge = true, false;
                part.text.append(data, length);
                return true;
            }
            if (part.text.size() < SniffBytes) part.text.append(data, std::min(length, SniffBytes - part.text.size()));
            part.size += length;
            if (part.out.is_open()) part.out.write(data, std::streamsize(length));
            return true;
        });
    auto discard = [&] {
        for (auto& part : parts) {
            if (part->out.is_open()) part->out.close();
            if (!part->path.empty()) fs::remove(part->path, error);
        }
    };
    if (tooLarge) {
        discard();
        return envelope::failure(envelope::TooLarge, "Gönderilen dosya çok büyük, en fazla 64 MB gönderilebilir.");
    }
    if (!read) {
        discard();
        return envelope::rejection({{"upload", "Gönderilen form okunamadı."}});
    }
    for (auto& part : parts)
        if (part->out.is_open()) part->out.close();

    ApiCall call;
    call.method = "POST";
    call.baseUrl = baseUrl;
    IncomingPart* main = nullptr;
    IncomingPart* preview = nullptr;
    for (auto& part : parts) {
        if (!part->file) {
            if (!call.params.contains(part->name)) call.params[part->name] = part->text;
        } else if (part->name == "upload[0]" && !main) {
            main = part.get();
        } else if (part->name == "upload[1]" && !preview) {
            preview = part.get();
        }
    }
    // Only stored files' names go under these.
    call.params.erase("upload");
    call.params.erase("preview");
    call.command = call.params.value("do", std::string());
    std::optional<std::string> authorization;
    if (req.has_header("Authorization")) authorization = req.get_header_value("Authorization");
    call.token = auth::bearerToken(authorization, call.params);
    if (!TakesPictures.count(call.command)) {
        discard();
        return envelope::rejection({{"do", "Bu işlemle dosya gönderilemez."}});
    }
    // A preview that could not be made comes empty: the video goes without one.
    if (!takesVideo(call.command) || (preview && preview->size == 0)) preview = nullptr;

    // Files are kept only for a signed-in account; without one the command refuses by itself.
    std::vector<std::pair<std::string, fs::path>> stored;
    auto forget = [&] {
        for (const auto& [name, file] : stored) {
            fs::remove(file, error);
            db.execute("DELETE FROM media_uploads WHERE name = ? AND claimed = 0", {name});
        }
    };
    const auto caller = main ? accounts::userForToken(db, call.token) : std::nullopt;
    if (caller) {
        auto keep = [&](const IncomingPart& part, const char* extension, const char* param) {
            const std::string name = randomName(extension);
            const fs::path file = folder / name;
            fs::rename(part.path, file, error);
            if (error) return false;
            db.execute("INSERT INTO media_uploads (name, user_id, size, created_at) VALUES (?, ?, ?, strftime('%s', 'now'))",
                       {name, caller->id, std::int64_t(part.size)});
            stored.emplace_back(name, file);
            call.params[param] = name;
            return true;
        };
        const char* extension = pictureExtension(main->text);
        if (!extension && takesVideo(call.command)) extension = videoExtension(main->text);
        // A picture must also be small enough for the service's usual limit.
        if (extension && std::string(extension) != ".mp4" && main->size > BodyLimitForPictures) {
            discard();
            return envelope::rejection({{"upload", "Fotoğraf en fazla 1 MB olabilir."}});
        }
        const char* previewExtension = preview ? pictureExtension(preview->text) : nullptr;
        if (!extension || (preview && !previewExtension)) {
            discard();
            if (!extension)
                return envelope::rejection({{"upload", takesVideo(call.command)
                                                           ? "Yalnızca JPEG ya da PNG fotoğraf veya MP4 video gönderilebilir."
                                                           : "Yalnızca JPEG ya da PNG fotoğraf gönderilebilir."}});
            return envelope::rejection({{"upload", "Videonun önizlemesi JPEG ya da PNG olmalıdır."}});
        }
        if (!keep(*main, extension, "upload") || (preview && !keep(*preview, previewExtension, "preview"))) {
            forget();
            discard();
            return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
        }
    }
    discard(); // what was not taken
    Json reply = dispatch.handle(std::move(call));
    // Refused: the files go with the message they came for.
    if (reply.value("status", 0) != envelope::Ok) forget();
    return reply;
}

std::optional<std::string> claimUpload(Database& db, std::int64_t userId, const std::string& name) {
    if (!validName(name)) return std::nullopt;
    if (db.execute("UPDATE media_uploads SET claimed = 1 WHERE name = ? AND user_id = ? AND claimed = 0", {name, userId}) != 1)
        return std::nullopt;
    return name;
}

bool serveUpload(Database& db, const std::string& path, httplib::Response& res) {
    const std::string name = path.substr(UploadedPrefix.size());
    if (!validName(name) || !db.scalar("SELECT COUNT(*) FROM media_uploads WHERE name = ? AND claimed = 1", {name}))
        return false;
    // Served from disk a piece at a time: a video is never read whole.
    const fs::path file = uploadsFolder(db) / name;
    std::error_code error;
    const auto size = fs::file_size(file, error);
    if (error) return false;
    auto stream = std::make_shared<std::ifstream>(file, std::ios::binary);
    if (!*stream) return false;
    res.set_content_provider(size_t(size), contentType(name), [stream](size_t offset, size_t length, httplib::DataSink& sink) {
        char buffer[64 * 1024];
        stream->clear();
        stream->seekg(std::streamoff(offset));
        stream->read(buffer, std::streamsize(std::min(length, sizeof buffer)));
        const auto got = stream->gcount();
        return got > 0 && sink.write(buffer, size_t(got));
    });
    return true;
}

} // namespace ekinora::server::media
