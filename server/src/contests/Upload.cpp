#include "contests/Upload.h"

#include "accounts/Accounts.h"
#include "core/Auth.h"
#include "core/Envelope.h"

#include <httplib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <set>

namespace ekinora::server::contests {

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

bool validName(const std::string& name) {
    if (name.size() != 36) return false;
    for (size_t i = 0; i < 32; ++i)
        if (!std::isxdigit(static_cast<unsigned char>(name[i]))) return false;
    return name.substr(32) == ".jpg" || name.substr(32) == ".png";
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
    const httplib::MultipartFormData* picture = nullptr;
    for (const auto& [name, part] : req.files) {
        if (part.filename.empty()) {
            if (!call.params.contains(name)) call.params[name] = part.content;
        } else if (name == "upload[0]" && !picture) {
            picture = &part;
        }
    }
    call.params.erase("upload"); // only a stored picture's name goes under it
    call.command = call.params.value("do", std::string());
    std::optional<std::string> authorization;
    if (req.has_header("Authorization")) authorization = req.get_header_value("Authorization");
    call.token = auth::bearerToken(authorization, call.params);
    if (!TakesPictures.count(call.command)) return envelope::rejection({{"do", "Bu işlemle dosya gönderilemez."}});

    // The picture is kept only for a signed-in account; without one the command refuses by itself.
    std::string stored;
    fs::path file;
    if (const auto caller = picture ? accounts::userForToken(db, call.token) : std::nullopt) {
        const char* extension = pictureExtension(picture->content);
        if (!extension) return envelope::rejection({{"upload", "Yalnızca JPEG ya da PNG fotoğraf gönderilebilir."}});
        const fs::path folder = uploadsFolder(db);
        std::error_code error;
        fs::create_directories(folder, error);
        stored = randomName(extension);
        file = folder / stored;
        std::ofstream out(file, std::ios::binary);
        out.write(picture->content.data(), std::streamsize(picture->content.size()));
        out.close();
        if (!out) {
            fs::remove(file, error);
            return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
        }
        db.execute("INSERT INTO media_uploads (name, user_id, size, created_at) VALUES (?, ?, ?, strftime('%s', 'now'))",
                   {stored, caller->id, std::int64_t(picture->content.size())});
        call.params["upload"] = stored;
    }
    Json reply = dispatch.handle(std::move(call));
    if (!stored.empty() && reply.value("status", 0) != envelope::Ok) {
        // Refused: the picture goes with the answer it came for.
        std::error_code error;
        fs::remove(file, error);
        db.execute("DELETE FROM media_uploads WHERE name = ? AND claimed = 0", {stored});
    }
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
    res.set_content(std::move(bytes), name.substr(32) == ".png" ? "image/png" : "image/jpeg");
    return true;
}

} // namespace ekinora::server::contests
