#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

#include <optional>
#include <string>

namespace ekinora::server::videos {

// Items a page of "videos" holds.
inline constexpr int VideoPageSize = 4;

// Where the stand-in of the public video service answers: the stream lookup
// "<prefix>/get_video_info?video_id=<hash>". The thumbnails are files under /static/videos/vi/<hash>/.
inline const std::string VideoServicePrefix = "/video-service";

// The company's short videos with their streams, files under static/videos; inserted once.
void seedVideos(Database& db, const Clock& clock);

// "videos": a page of "videos" ("title", "youtubeVideoHash"), the next one with "ptoken" 1.
void registerVideoCommands(Dispatch& dispatch, Database& db);

struct ServiceReply {
    int httpStatus;
    std::string body; // JSON
};

// The stream lookup: 200 with "streamURLs" (quality key to address) for a known hash, 404 with
// "error" for any other; nullopt for a path that is not the lookup's.
std::optional<ServiceReply> videoServiceReply(Database& db, const std::string& path, const std::string& videoId,
                                              const std::string& baseUrl);

} // namespace ekinora::server::videos
