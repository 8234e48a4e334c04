#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <cstdint>
#include <optional>
#include <string>

namespace httplib {
struct Request;
struct Response;
class ContentReader;
} // namespace httplib

namespace ekinora::server::media {

// The media upload beside the /api commands: a multipart form whose text fields are a command's
// parameters ("do" names it) and whose "upload[0]" part is a picture, or for a conversation message
// also an MP4 video with its preview picture as "upload[1]".
inline const std::string UploadPath = "/omr/upload/";
// Where stored pictures are served back: "/omr/uploads/<name>".
inline const std::string UploadedPrefix = "/omr/uploads/";
// The one body larger than the service's usual limit: a video. A picture keeps the usual 1 MiB.
inline constexpr std::uint64_t UploadLimit = 64ull * 1024 * 1024;
inline constexpr std::uint64_t BodyLimitForPictures = 1024 * 1024;

// Stores the picture of a signed-in account in the uploads folder (beside the database file, or a
// folder of its own for a database in memory), runs the command with the picture's name as its
// "upload" parameter (a video's preview as "preview"), and keeps the files only when the command
// takes them. Only commands that take
// pictures are run this way.
// The form is read as it streams in: files go straight to disk, never whole into memory.
Json upload(const Dispatch& dispatch, Database& db, const httplib::Request& req, const httplib::ContentReader& reader,
            const std::string& baseUrl);

// Serves a stored picture; false when there is none of that name.
bool serveUpload(Database& db, const std::string& path, httplib::Response& res);

// Takes a picture the account uploaded for the command being run: its name when it is there and not
// yet taken, nullopt otherwise.
std::optional<std::string> claimUpload(Database& db, std::int64_t userId, const std::string& name);

// The address a stored picture is served at.
std::string uploadUrl(const std::string& baseUrl, const std::string& name);

} // namespace ekinora::server::media
