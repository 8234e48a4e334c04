#include "core/Server.h"

#include "accounts/Accounts.h"
#include "accounts/Dealers.h"
#include "accounts/DemoAccounts.h"
#include "accounts/Login.h"
#include "accounts/Profile.h"
#include "accounts/Registration.h"
#include "analytics/Collector.h"
#include "catalogue/Catalogue.h"
#include "catalogue/CatalogueDetail.h"
#include "seeds/Seeds.h"
#include "content/Pages.h"
#include "contests/Contests.h"
#include "media/Upload.h"
#include "conversations/Conversations.h"
#include "conversations/Unread.h"
#include "events/Events.h"
#include "info/SiteInfo.h"
#include "loyalty/Loyalty.h"
#include "news/News.h"
#include "videos/Videos.h"
#include "core/ApiCall.h"
#include "core/Auth.h"
#include "core/Database.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"
#include "core/Limits.h"
#include "core/Migrations.h"
#include "core/StaticFiles.h"
#include "farms/Calendar.h"
#include "farms/Documents.h"
#include "farms/Farms.h"
#include "farms/Produces.h"
#include "grants/Grants.h"
#include "market/Market.h"
#include "notifications/Notifications.h"
#include "regions/RegionCommands.h"
#include "regions/Regions.h"
#include "system/Popups.h"
#include "system/Settings.h"
#include "system/SystemCommands.h"
#include "weather/WeatherCommands.h"

#include <httplib.h>
#include <sys/socket.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <mutex>
#include <stdexcept>
#include <thread>

#ifndef EKINORA_SERVER_DATA_DIR
#define EKINORA_SERVER_DATA_DIR "data"
#endif
#ifndef EKINORA_SERVER_STATIC_DIR
#define EKINORA_SERVER_STATIC_DIR "static"
#endif

namespace ekinora::server {

namespace {

// httplib adds these to the request's headers itself; they never came from the client.
bool isTransportHeader(const std::string& name) {
    return name == "REMOTE_ADDR" || name == "REMOTE_PORT" || name == "LOCAL_ADDR" || name == "LOCAL_PORT";
}

// The analytics collector's routes, which take their bodies as they come.
bool isCollectorPath(const std::string& path) {
    return path == "/collect" || path == "/batch" || path == "/_demo/collector" || path == "/_demo/hits/clear";
}

bool isLoopback(const std::string& address) {
    return address.rfind("127.", 0) == 0 || address == "::1" || address.rfind("::ffff:127.", 0) == 0;
}

// Per request, on the thread that serves it: pre-routing, the handler and the logger run there in turn.
struct RequestContext {
    std::string method; // as sent, before the GET-with-body rewrite
    int envelopeStatus = 0;
    std::chrono::steady_clock::time_point started;
};
thread_local RequestContext t_context;

void sendJson(httplib::Response& res, const Json& body, int httpStatus = 200) {
    res.status = httpStatus;
    res.set_content(envelope::serialize(body), envelope::ContentType);
}

std::optional<Json> jsonObjectBody(const httplib::Request& req) {
    if (req.body.empty()) return Json::object();
    Json body = Json::parse(req.body, nullptr, false);
    if (!body.is_object()) return std::nullopt;
    return body;
}

std::string textMember(const Json& object, const char* name) {
    auto it = object.find(name);
    return it != object.end() && it->is_string() ? it->get<std::string>() : std::string();
}

bool boolMember(const Json& object, const char* name) {
    auto it = object.find(name);
    if (it == object.end()) return false;
    if (it->is_boolean()) return it->get<bool>();
    if (it->is_number()) return it->get<double>() != 0;
    if (it->is_string()) return *it == "1" || *it == "true" || *it == "on";
    return false;
}

// httplib listens with room for 5 connections not yet accepted; when clients connect faster than the
// accepting thread gets the processor, the rest are dropped and retried by the client a second later.
class HttpServer : public httplib::Server {
public:
    void widenListenQueue(int backlog) { ::listen(svr_sock_, backlog); }
};

} // namespace

struct Server::Impl {
    ServerOptions options;
    std::string dataDir;
    std::string staticDir;

    std::mutex readyMutex;
    std::unique_ptr<Database> db;
    std::unique_ptr<Dispatch> dispatch;
    std::unique_ptr<StaticFiles> files;
    std::unique_ptr<weather::WeatherService> weatherService;

    RequestLog log;
    std::unique_ptr<httplib::Server> http;
    std::thread thread;
    std::atomic<int> port{0};
    std::mutex outputMutex;

    explicit Impl(ServerOptions o) : options(std::move(o)) {
        dataDir = options.dataDir.empty() ? EKINORA_SERVER_DATA_DIR : options.dataDir;
        staticDir = options.staticDir.empty() ? EKINORA_SERVER_STATIC_DIR : options.staticDir;
    }

    // The database is opened on first need, so the switches can be set before start().
    Database& database() {
        std::lock_guard guard(readyMutex);
        if (!db) {
            auto opened = std::make_unique<Database>(options.dbPath);
            opened->migrate(migrations());
            regions::seed(*opened, dataDir);
            accounts::seedDemoAccounts(*opened);
            accounts::setDemoTokens(*opened, options.demo);
            notifications::seedDemoNotifications(*opened);
            sys::Settings(*opened).seed();
            sys::seedPopups(*opened);
            farms::seedProduces(*opened);
            farms::seedCalendar(*opened);
            content::seedPages(*opened);
            contests::seedContests(*opened, options.clock);
            conversations::seedConversations(*opened);
            news::seedNews(*opened, options.clock);
            events::seedEvents(*opened, options.clock);
            videos::seedVideos(*opened, options.clock);
            loyalty::seedDemoLoyalty(*opened, options.clock);

            auto table = std::make_unique<Dispatch>([raw = opened.get()](const std::string& token) {
                return accounts::userForToken(*raw, token);
            });
            sys::registerCommands(*table, *opened);
            accounts::registerLoginCommands(*table, *opened, {options.clock, smsSink(), options.demo});
            accounts::registerRegistrationCommands(*table, *opened, options.clock);
            accounts::registerProfileCommands(*table, *opened);
            accounts::registerDealerCommands(*table, *opened);
            notifications::registerNotificationCommands(*table, *opened);
            regions::registerCommands(*table, *opened);
            farms::registerProduceCommands(*table, *opened);
            farms::registerFarmCommands(*table, *opened, options.clock);
            content::registerPageCommands(*table, *opened);
            catalogue::registerCatalogueCommands(*table, *opened);
            news::registerNewsCommands(*table, *opened);
            events::registerEventCommands(*table, *opened, options.clock);
            videos::registerVideoCommands(*table, *opened);
            conversations::registerUnreadCommand(*table, *opened);
            conversations::registerConversationCommands(*table, *opened);
            contests::registerContestCommands(*table, *opened, options.clock);
            grants::registerGrantCommands(*table, *opened, options.clock);
            market::registerMarketCommands(*table, *opened, options.clock);
            loyalty::registerLoyaltyCommands(*table, *opened, options.clock);
            loyalty::registerSaleCommands(*table, *opened, options.clock);
            weatherService = std::make_unique<weather::WeatherService>(*opened, options.clock);
            weather::registerCommands(*table, *weatherService);

            files = std::make_unique<StaticFiles>(staticDir);
            dispatch = std::move(table);
            db = std::move(opened);
        }
        return *db;
    }

    // There is no SMS gateway: the code goes to the console, where the demo reads it.
    accounts::SmsSink smsSink() {
        if (options.quiet && !options.smsGateway) return {};
        return [this](const std::string& phone, const std::string& code) {
            if (options.smsGateway) options.smsGateway(phone, code);
            if (options.quiet) return;
            std::lock_guard guard(outputMutex);
            std::cout << "SMS kodu " << phone << ": " << code << std::endl;
        };
    }

    std::string ownBaseUrl() const {
        const bool wildcard = options.host == "0.0.0.0" || options.host == "::" || options.host.empty();
        std::string host = wildcard ? "127.0.0.1" : options.host;
        if (host.find(':') != std::string::npos) host = "[" + host + "]";
        return "http://" + host + ":" + std::to_string(port.load());
    }

    // Media addresses follow the host the client used, so a phone on the network gets addresses it
    // can reach; without a usable Host header they fall back to the service's own address.
    std::string requestBaseUrl(const httplib::Request& req) const {
        const std::string host = req.get_header_value("Host");
        const bool usable =
            !host.empty() &&
            host.find_first_not_of("abcdefghijklmnopqrstuvwxyz"
                                   "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-:[]") == std::string::npos;
        return usable ? "http://" + host : ownBaseUrl();
    }

    void record(const httplib::Request& req) {
        RecordedRequest r;
        r.method = t_context.method;
        r.path = req.path;
        r.target = req.target;
        for (const auto& [name, value] : req.headers)
            if (!isTransportHeader(name)) r.headers.emplace_back(name, value);
        r.body = req.body;
        log.add(std::move(r));
    }

    void route(const httplib::Request& req, httplib::Response& res) {
        const std::string& path = req.path;
        const bool demo = path.rfind("/_demo/", 0) == 0;
        if (!demo) record(req);
        const std::string& method = t_context.method;

        if (path == "/api" || path == "/api/") {
            if (method == "GET" || method == "POST") return api(req, res);
        } else if (path == "/check") {
            if (method == "GET" || method == "HEAD") return sendJson(res, sys::probeReply(database()));
        } else if (path == sys::StorePath) {
            if (method == "GET" || method == "HEAD")
                return res.set_content(sys::storePage(database()), "text/html; charset=utf-8");
        } else if (path == weather::LegacyPath) {
            if (method == "GET") return legacyWeather(req, res);
        } else if (path.rfind(media::UploadedPrefix, 0) == 0) {
            if ((method == "GET" || method == "HEAD") && media::serveUpload(database(), path, res)) return;
        } else if (path.rfind("/static/", 0) == 0) {
            if ((method == "GET" || method == "HEAD") && serveStatic(path.substr(8), res)) return;
        } else if (demo) {
            return demoControl(req, res);
        } else if (method == "GET" || method == "HEAD") {
            if (auto document = farms::calendarDocument(database(), path))
                return res.set_content(std::move(document->body), document->contentType);
            if (auto document = grants::grantDocument(database(), path, options.clock))
                return res.set_content(std::move(document->body), document->contentType);
            if (auto document = catalogue::productDocument(database(), path))
                return res.set_content(std::move(document->body), document->contentType);
            if (auto document = catalogue::sprayDocument(path))
                return res.set_content(std::move(document->body), document->contentType);
            if (auto document = seeds::seedDocument(database(), path))
                return res.set_content(std::move(document->body), document->contentType);
            if (auto portal = loyalty::portalPage(database(), path, req.get_param_value("token"),
                                                  options.clock ? options.clock() : systemSeconds())) {
                res.status = portal->httpStatus;
                return res.set_content(std::move(portal->html), "text/html; charset=utf-8");
            }
            if (auto document = info::siteInfoDocument(path))
                return res.set_content(std::move(*document), envelope::ContentType);
            if (auto reply = videos::videoServiceReply(database(), path, req.get_param_value("video_id"),
                                                       requestBaseUrl(req))) {
                res.status = reply->httpStatus;
                return res.set_content(std::move(reply->body), envelope::ContentType);
            }
        }
        notFound(res);
    }

    void notFound(httplib::Response& res) {
        t_context.envelopeStatus = envelope::NotFound;
        sendJson(res, envelope::failure(envelope::NotFound, envelope::NotFoundText), 404);
    }

    static std::string_view rawQueryOf(const httplib::Request& req) {
        const auto question = req.target.find('?');
        return question == std::string::npos ? std::string_view() : std::string_view(req.target).substr(question + 1);
    }

    void refuse(httplib::Response& res, const Json& reply, int httpStatus = 200) {
        t_context.envelopeStatus = reply.value("status", 0);
        sendJson(res, reply, httpStatus);
    }

    void api(const httplib::Request& req, httplib::Response& res) {
        Parameters parameters = mergeParameters(parseQuery(rawQueryOf(req)), req.body);
        // The body was read within the largest limit when the command came only inside it.
        if (const size_t limit = dispatch->bodyLimit(parameters.command); req.body.size() > limit)
            return refuse(res, envelope::tooLarge(limit), 413);
        // Nothing of a request the service cannot read reaches a command, so nothing of it is written.
        if (parameters.unreadableBody)
            return refuse(res, envelope::rejection({{"body", envelope::UnreadableBody}}));
        if (auto rejected = limits::textRejection(parameters.params)) return refuse(res, *rejected);

        ApiCall call;
        call.method = t_context.method;
        call.command = std::move(parameters.command);
        call.params = std::move(parameters.params);
        std::optional<std::string> authorization;
        if (req.has_header("Authorization")) authorization = req.get_header_value("Authorization");
        call.token = auth::bearerToken(authorization, call.params);
        call.baseUrl = requestBaseUrl(req);

        const Json reply = dispatch->handle(std::move(call));
        t_context.envelopeStatus = reply.value("status", 0);
        sendJson(res, reply);
    }

    // The older weather endpoint: its command and parameters in the query, the same envelope.
    void legacyWeather(const httplib::Request& req, httplib::Response& res) {
        const auto question = req.target.find('?');
        const std::string_view rawQuery = question == std::string::npos
                                              ? std::string_view()
                                              : std::string_view(req.target).substr(question + 1);
        Parameters parameters = mergeParameters(parseQuery(rawQuery), {});
        ApiCall call;
        call.method = t_context.method;
        call.command = std::move(parameters.command);
        call.params = std::move(parameters.params);
        call.baseUrl = requestBaseUrl(req);
        const Json reply = weatherService->legacyDay(call);
        t_context.envelopeStatus = reply.value("status", 0);
        sendJson(res, reply);
    }

    bool serveStatic(const std::string& relative, httplib::Response& res) {
        auto file = files->find(relative);
        if (!file) return false;
        if (file->size == 0) {
            res.set_content(std::string(), file->mimeType);
            return true;
        }
        auto stream = std::make_shared<std::ifstream>(file->path, std::ios::binary);
        if (!*stream) return false;
        res.set_content_provider(size_t(file->size), file->mimeType,
                                 [stream](size_t offset, size_t length, httplib::DataSink& sink) {
                                     char buffer[64 * 1024];
                                     stream->clear();
                                     stream->seekg(std::streamoff(offset));
                                     const auto chunk = std::streamsize(std::min(length, sizeof buffer));
                                     stream->read(buffer, chunk);
                                     const auto got = stream->gcount();
                                     if (got <= 0) return false;
                                     return sink.write(buffer, size_t(got));
                                 });
        return true;
    }

    void demoControl(const httplib::Request& req, httplib::Response& res) {
        if (!isLoopback(req.remote_addr)) {
            t_context.envelopeStatus = envelope::Forbidden;
            return sendJson(
                res, envelope::failure(envelope::Forbidden, "Bu işlem yalnızca bu makineden yapılabilir."),
                403);
        }
        Database& db = database();
        const std::string& method = t_context.method;
        const std::string name = req.path.substr(7);

        if (name == "requests" && method == "GET") return sendJson(res, requestsJson());
        if (name == "requests/clear" && method == "POST") {
            log.clear();
            return sendJson(res, envelope::success(nullptr));
        }
        if (method != "POST") return notFound(res);

        auto body = jsonObjectBody(req);
        if (!body) return sendJson(res, envelope::failure(envelope::Rejected, "Geçersiz JSON gövdesi"), 400);

        sys::Settings settings(db);
        if (name == "maintenance") {
            settings.setMaintenance(boolMember(*body, "on"), textMember(*body, "text"));
            const auto state = settings.maintenance();
            return sendJson(res, envelope::success(Json{{"maintenance", state.on}, {"text", state.text}}));
        }
        if (name == "check") {
            settings.setProbeDown(boolMember(*body, "down"), textMember(*body, "message"));
            return sendJson(res, envelope::success(sys::probeReply(db)));
        }
        if (name == "popup") {
            // With "phone": the campaign for that account only, and the reply is what it sees.
            const std::string phone = textMember(*body, "phone");
            std::int64_t userId = 0;
            if (!phone.empty()) {
                userId = db.scalar("SELECT id FROM users WHERE phone = ?", {phone});
                if (!userId)
                    return sendJson(
                        res, envelope::rejection("Hesap bulunamadı", {{"phone", "Hesap bulunamadı"}}), 400);
                sys::setPopupActiveFor(db, sys::CampaignPopupCode, userId, boolMember(*body, "on"));
            } else {
                sys::setPopupActive(db, sys::CampaignPopupCode, boolMember(*body, "on"));
            }
            return sendJson(
                res, envelope::success(Json{{"popup", sys::currentPopup(db, userId, requestBaseUrl(req))}}));
        }
        if (name == "activate") {
            // The company's approval of a registered dealer; "phone" in the body or the query.
            std::string phone = textMember(*body, "phone");
            if (phone.empty()) phone = req.get_param_value("phone");
            const auto result = accounts::activateDealer(db, phone);
            if (result == accounts::Activation::NotFound)
                return sendJson(
                    res,
                    envelope::rejection("Bu numara ile kayıtlı bir bayi bulunamadı.",
                                        {{"phone", "Bu numara ile kayıtlı bir bayi bulunamadı."}}),
                    400);
            return sendJson(
                res, envelope::success(Json{{"phone", phone},
                                            {"active", true},
                                            {"activated", result == accounts::Activation::Activated}}));
        }
        if (name == "notify") {
            const std::string phone = textMember(*body, "phone");
            const std::string message = textMember(*body, "message");
            const auto userId = db.scalar("SELECT id FROM users WHERE phone = ?", {phone});
            if (!userId)
                return sendJson(res, envelope::rejection("Hesap bulunamadı", {{"phone", "Hesap bulunamadı"}}),
                                400);
            if (message.empty())
                return sendJson(res,
                                envelope::rejection("Bildirim metnini giriniz",
                                                    {{"message", "Bildirim metnini giriniz"}}),
                                400);
            notifications::notify(db, userId, message);
            return sendJson(res, envelope::success(notifications::list(db, userId, false)));
        }
        if (name == "version") {
            const std::string version = textMember(*body, "version");
            if (version.empty())
                return sendJson(res, envelope::rejection("Sürüm giriniz", {{"version", "Sürüm giriniz"}}),
                                400);
            settings.setPublishedVersion(version);
            return sendJson(res, envelope::success(Json{{"version", settings.publishedVersion()}}));
        }
        notFound(res);
    }

    Json requestsJson() const {
        Json list = Json::array();
        for (const auto& r : log.all()) {
            Json headers = Json::array();
            for (const auto& [name, value] : r.headers)
                headers.push_back(Json::array({name, value}));
            list.push_back(Json{{"method", r.method},
                                {"path", r.path},
                                {"target", r.target},
                                {"headers", std::move(headers)},
                                {"body", r.body}});
        }
        return list;
    }

    void logLine(const httplib::Request& req, const httplib::Response& res) {
        const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(
                                 std::chrono::steady_clock::now() - t_context.started)
                                 .count();
        std::string line = req.remote_addr + " " +
                           (t_context.method.empty() ? req.method : t_context.method) + " " + req.target +
                           " -> " + std::to_string(res.status);
        if (t_context.envelopeStatus) line += " [" + std::to_string(t_context.envelopeStatus) + "]";
        char took[32];
        std::snprintf(took, sizeof took, " %.2f ms", double(elapsed) / 1000.0);
        line += took;
        std::lock_guard guard(outputMutex);
        std::cout << line << std::endl;
    }

    // The body limit of the request: its command's when the query names one, else the largest a
    // command has (api() checks the command's own once the body names it).
    size_t bodyLimitOf(const httplib::Request& req) const {
        if (req.path == "/api" || req.path == "/api/") {
            for (const auto& [name, value] : parseQuery(rawQueryOf(req)))
                if (name == "do") return dispatch->bodyLimit(value);
            return dispatch->largestBodyLimit();
        }
        return Dispatch::DefaultBodyLimit;
    }

    // Reads the body into the request, up to the limit. A larger one is refused: one announced
    // larger is not read at all, one sent in chunks no further than a little past the limit. A body
    // read to its end keeps the connection; any other ends it, so its rest is never read.
    bool readBody(const httplib::Request& req, httplib::Response& res, const httplib::ContentReader& reader) {
        const size_t limit = isCollectorPath(req.path) ? envelope::BodyLimit : bodyLimitOf(req);
        constexpr size_t ReadPast = 256 * 1024;
        const bool announced = req.has_header("Content-Length");
        const auto length = announced ? std::stoull("0" + req.get_header_value("Content-Length")) : 0;
        bool over = length > limit;
        bool complete = false;
        if (!over || length <= limit + ReadPast) {
            std::string body;
            size_t seen = 0;
            auto keep = [&](const char* data, size_t size) {
                seen += size;
                if (seen > limit) over = true;
                else body.append(data, size);
                return seen <= limit + ReadPast;
            };
            // Only the media upload reads multipart bodies: elsewhere their parts are counted, not kept.
            if (req.is_multipart_form_data())
                complete = reader([](const httplib::MultipartFormData&) { return true; },
                                  [&](const char* data, size_t size) {
                                      const bool more = keep(data, size);
                                      body.clear();
                                      return more;
                                  });
            else
                complete = reader(keep);
            if (!over && complete) {
                const_cast<httplib::Request&>(req).body = std::move(body);
                return true;
            }
        }
        record(req);
        const Json refusal = envelope::tooLarge(limit);
        t_context.envelopeStatus = envelope::TooLarge;
        if (complete) {
            sendJson(res, refusal, 413);
            return false;
        }
        // A reply whose writer reports a failure once it has written everything makes the HTTP
        // library close the connection instead of reading the rest of the body as the next request.
        res.status = 413;
        auto text = std::make_shared<std::string>(envelope::serialize(refusal));
        res.set_content_provider(text->size(), envelope::ContentType,
                                 [text](size_t offset, size_t size, httplib::DataSink& sink) {
                                     sink.write(text->data() + offset, size);
                                     return false;
                                 });
        return false;
    }

    void install(httplib::Server& server) {
        analytics::registerRoutes(server, database(), [this](const httplib::Request& req, httplib::Response& res,
                                                             const httplib::ContentReader& reader) {
            return readBody(req, res, reader);
        });
        // A GET may carry a JSON body (the app sends some commands that way). httplib reads a body
        // only for methods that expect one, so such a request is routed as POST and keeps its own
        // method in the request context.
        server.set_pre_routing_handler([](const httplib::Request& req, httplib::Response&) {
            t_context = RequestContext{req.method, 0, std::chrono::steady_clock::now()};
            const bool hasBody =
                (req.has_header("Content-Length") && req.get_header_value("Content-Length") != "0") ||
                req.get_header_value("Transfer-Encoding").find("chunked") != std::string::npos;
            if (req.method == "GET" && hasBody) const_cast<httplib::Request&>(req).method = "POST";
            return httplib::Server::HandlerResponse::Unhandled;
        });
        // The media upload streams its files to disk as they arrive.
        server.Post("/omr/upload/?", [this](const httplib::Request& req, httplib::Response& res,
                                            const httplib::ContentReader& reader) {
            record(req);
            const Json reply = media::upload(*dispatch, database(), req, reader, requestBaseUrl(req));
            t_context.envelopeStatus = reply.value("status", 0);
            sendJson(res, reply, reply.value("status", 0) == envelope::TooLarge ? 413 : 200);
        });

        // Every other body is read here, within its command's limit, before anything looks at it.
        auto bodyReader = [this](const httplib::Request& req, httplib::Response& res,
                                 const httplib::ContentReader& reader) {
            if (readBody(req, res, reader)) route(req, res);
        };
        server.Post("(?!/omr/upload/?$|/collect$|/batch$|/_demo/collector$|/_demo/hits/clear$).*", bodyReader);
        server.Put("(?!/collect$).*", bodyReader);
        server.Patch(".*", bodyReader);
        server.Delete(".*", bodyReader);

        auto handler = [this](const httplib::Request& req, httplib::Response& res) { route(req, res); };
        server.Get(".*", handler);
        server.Post(".*", handler);
        server.Put(".*", handler);
        server.Patch(".*", handler);
        server.Delete(".*", handler);
        server.Options(".*", handler);

        // Errors httplib answers by itself (a malformed request, a body too large) get an envelope too.
        server.set_error_handler(
            httplib::Server::HandlerWithResponse([](const httplib::Request&, httplib::Response& res) {
                // A reply of the service's own (a body, or a refusal written as the connection ends).
                if (!res.body.empty() || res.content_provider_) return httplib::Server::HandlerResponse::Unhandled;
                sendJson(res,
                         res.status == envelope::TooLarge ? envelope::tooLarge(media::UploadLimit)
                                                          : envelope::failure(res.status, "İstek işlenemedi"),
                         res.status);
                return httplib::Server::HandlerResponse::Handled;
            }));
        server.set_exception_handler(
            [](const httplib::Request&, httplib::Response& res, std::exception_ptr error) {
                try {
                    if (error) std::rethrow_exception(error);
                } catch (const std::exception& e) {
                    std::cerr << "istek başarısız: " << e.what() << std::endl;
                } catch (...) {
                }
                sendJson(res, envelope::failure(envelope::ServerError, envelope::ServerErrorText), 500);
            });

        if (!options.quiet)
            server.set_logger(
                [this](const httplib::Request& req, const httplib::Response& res) { logLine(req, res); });
        // The media upload's limit; every other body keeps its command's (readBody).
        server.set_payload_max_length(media::UploadLimit);
        // Headers and body go out in separate writes; without this each reply on a kept-alive
        // connection waits for the client's delayed acknowledgement (some 40 ms).
        server.set_tcp_nodelay(true);
        // httplib's default adds SO_REUSEPORT, which lets a second service bind the same port and
        // silently share its connections. A restart may reuse the address, nothing more.
        server.set_socket_options([](socket_t sock) {
            int yes = 1;
            setsockopt(sock, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        });
        // A worker serves one connection for as long as it is kept alive, so the pool bounds the
        // connections served at once rather than the work, which the database serializes anyway.
        // With httplib's default of 8 workers a ninth connection waits until one of the eight closes:
        // up to 5 s when they are idle phones. A kept-alive connection serves 100 requests instead
        // of 5, which spares a busy client a new connection every few requests.
        server.new_task_queue = [] { return new httplib::ThreadPool(32); };
        server.set_keep_alive_max_count(100);
    }
};

Server::Server(ServerOptions options) : d(std::make_unique<Impl>(std::move(options))) {}

Server::~Server() {
    stop();
}

int Server::start() {
    if (d->http) throw std::runtime_error("server already started");
    d->database();

    auto http = std::make_unique<HttpServer>();
    d->install(*http);
    int bound = -1;
    if (d->options.port == 0)
        bound = http->bind_to_any_port(d->options.host);
    else if (http->bind_to_port(d->options.host, d->options.port))
        bound = d->options.port;
    if (bound <= 0)
        throw std::runtime_error("cannot listen on " + d->options.host + ":" +
                                 std::to_string(d->options.port));
    http->widenListenQueue(SOMAXCONN);

    d->port = bound;
    d->http = std::move(http);
    auto finished = std::make_shared<std::atomic<bool>>(false);
    d->thread = std::thread([server = d->http.get(), finished] {
        server->listen_after_bind();
        *finished = true;
    });
    // stop() only takes effect once the accept loop runs.
    while (!d->http->is_running() && !*finished)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (*finished && !d->http->is_running()) {
        stop();
        throw std::runtime_error("cannot serve on " + d->options.host + ":" + std::to_string(bound));
    }
    return bound;
}

void Server::stop() {
    if (!d->http) return;
    d->http->stop();
    if (d->thread.joinable()) d->thread.join();
    d->http.reset();
}

int Server::port() const {
    return d->port;
}

std::string Server::baseUrl() const {
    return d->ownBaseUrl();
}

void Server::setMaintenance(bool on, std::string text) {
    sys::Settings(d->database()).setMaintenance(on, text);
}

void Server::setProbeDown(bool down, std::string message) {
    sys::Settings(d->database()).setProbeDown(down, message);
}

void Server::setPopupActive(bool on) {
    sys::setPopupActive(d->database(), sys::CampaignPopupCode, on);
}

bool Server::setPopupActiveFor(const std::string& phone, bool on) {
    Database& db = d->database();
    const auto userId = db.scalar("SELECT id FROM users WHERE phone = ?", {phone});
    return userId && sys::setPopupActiveFor(db, sys::CampaignPopupCode, userId, on);
}

bool Server::activateDealer(const std::string& phone) {
    return accounts::activateDealer(d->database(), phone) != accounts::Activation::NotFound;
}

void Server::setPublishedVersion(std::string version) {
    sys::Settings(d->database()).setPublishedVersion(version);
}

std::vector<RecordedRequest> Server::requests() const {
    return d->log.all();
}

void Server::clearRequests() {
    d->log.clear();
}

std::vector<std::pair<std::string, Access>> Server::commands() const {
    d->database();
    return d->dispatch->commands();
}

size_t Server::bodyLimit(const std::string& command) const {
    d->database();
    return d->dispatch->bodyLimit(command);
}

std::string Server::demoAccountsText() const {
    return accounts::demoAccountsText(d->options.demo);
}

} // namespace ekinora::server
