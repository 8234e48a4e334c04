#include "media/Upload.h"

#include "accounts/Accounts.h"
#include "core/Auth.h"
#include "core/Envelope.h"

#include <httplib.h>
#include <unistd.h>

#include <filesystem>
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

Json upload(const Dispatch& dispatch, Database& db, const httplib::Request& req, const std::string& baseUrl) {
    if (!req.is_multipart_form_data())
        return envelope::rejection({{"upload", "Gönderilen form okunamadı."}});
    ApiCall call;
    call.method = "POST";
    call.baseUrl = baseUrl;
    const httplib::MultipartFormData* main = nullptr;
    const httplib::MultipartFormData* preview = nullptr;
    for (const auto& [name, part] : req.files) {
        if (part.filename.empty()) {
            if (!call.params.contains(name)) call.params[name] = part.content;
        } else if (name == "upload[0]" && !main) {
            main = &part;
        } else if (name == "upload[1]" && !preview) {
            preview = &part;
        }
    }
    // Only stored files' names go under these.
    call.params.erase("upload");
    call.params.erase("preview");
    call.command = call.params.value("do", std::string());
    std::optional<std::string> authorization;
    if (req.has_header("Authorization")) authorization = req.get_header_value("Authorization");
    call.token = auth::bearerToken(authorization, call.params);
    if (!TakesPictures.count(call.command)) return envelope::rejection({{"do", "Bu işlemle dosya gönderilemez."}});
    // A preview that could not be made comes empty: the video goes without one.
    if (!takesVideo(call.command) || (preview && preview->content.empty())) preview = nullptr;

    // Files are kept only for a signed-in account; without one the command refuses by itself.
    std::vector<std::pair<std::string, fs::path>> stored;
    auto forget = [&] {
        std::error_code error;
        for (const auto& [name, file] : stored) {
            fs::remove(file, error);
            db.execute("DELETE FROM media_uploads WHERE name = ? AND claimed = 0", {name});
        }
    };
    if (const auto caller = main ? accounts::userForToken(db, call.token) : std::nullopt) {
        const fs::path folder = uploadsFolder(db);
        std::error_code error;
        fs::create_directories(folder, error);
        auto keep = [&](const httplib::MultipartFormData& part, const char* extension, const char* param) {
            const std::string name = randomName(extension);
            const fs::path file = folder / name;
            std::ofstream out(file, std::ios::binary);
            out.write(part.content.data(), std::streamsize(part.content.size()));
            out.close();
            if (!out) {
                fs::remove(file, error);
                return false;
            }
            db.execute("INSERT INTO media_uploads (name, user_id, size, created_at) VALUES (?, ?, ?, strftime('%s', 'now'))",
                       {name, caller->id, std::int64_t(part.content.size())});
            stored.emplace_back(name, file);
            call.params[param] = name;
            return true;
        };
        const char* extension = pictureExtension(main->content);
        if (!extension && takesVideo(call.command)) extension = videoExtension(main->content);
        if (!extension)
            return envelope::rejection({{"upload", takesVideo(call.command)
                                                       ? "Yalnızca JPEG ya da PNG fotoğraf veya MP4 video gönderilebilir."
                                                       : "Yalnızca JPEG ya da PNG fotoğraf gönderilebilir."}});
        const char* previewExtension = preview ? pictureExtension(preview->content) : nullptr;
        if (preview && !previewExtension)
            return envelope::rejection({{"upload", "Videonun önizlemesi JPEG ya da PNG olmalıdır."}});
        if (!keep(*main, extension, "upload") || (preview && !keep(*preview, previewExtension, "preview"))) {
            forget();
            return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
        }
    }
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
    std::ifstream in(uploadsFolder(db) / name, std::ios::binary);
    if (!in) return false;
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    res.set_content(std::move(bytes), contentType(name));
    return true;
}

} // namespace ekinora::server::media
