#pragma once

#include "core/Database.h"

#include <filesystem>
#include <functional>
#include <string>

namespace httplib {
class Server;
struct Request;
struct Response;
class ContentReader;
}

namespace ekinora::server::analytics {

// Where the tag containers are kept: <dir>/<container id>.json. The default is the folder beside
// this source file, which the app's analytics library also bundles as its default container.
std::filesystem::path defaultContainerDir();

// The analytics addresses, ahead of the service's own routing:
//   GET|POST /collect            one hit (the query, or a form body)
//   POST     /batch              hits separated by line breaks, plain, gzip or deflate
//   GET      /tags/rtc/ios?id=   a tag container (also with a preview's rtc_auth and rtc_preview)
// and, for loopback clients only, the demo controls
//   POST /_demo/collector {"refuseBatches":302}   answer batches with that status (0: accept again)
//   GET  /_demo/hits[?since=ID]                   what the collector received, oldest first
//   POST /_demo/hits/clear
// A body is taken through `readBody`, which keeps it within the service's limit (chunked ones too)
// and answers the refusal itself when it returns false.
using BodyReader = std::function<bool(const httplib::Request&, httplib::Response&, const httplib::ContentReader&)>;
void registerRoutes(httplib::Server& http, Database& db, BodyReader readBody,
                    std::filesystem::path containerDir = defaultContainerDir());

} // namespace ekinora::server::analytics
