#include "analytics/Collector.h"

#include "core/Envelope.h"

#include <httplib.h>

#include <chrono>
#include <fstream>
#include <sstream>

namespace ekinora::server::analytics {

namespace {

// The address written in the container files: the service's default root.
const std::string DefaultServiceRoot = "http://127.0.0.1:8470";

bool isLoopback(const std::string& address) {
    return address.rfind("127.", 0) == 0 || address == "::1" || address.rfind("::ffff:127.", 0) == 0;
}

std::int64_t nowSeconds() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

void reply(httplib::Response& res, const Json& body, int status = 200) {
    res.status = status;
    res.set_content(envelope::serialize(body), envelope::ContentType);
}

// "a=1&b=2" to {"a":"1","b":"2"}; a repeated key keeps its last value.
Json parseForm(const std::string& text) {
    Json parameters = Json::object();
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find('&', start);
        if (end == std::string::npos) end = text.size();
        const std::string pair = text.substr(start, end - start);
        if (!pair.empty()) {
            const auto eq = pair.find('=');
            const std::string key = httplib::detail::decode_url(pair.substr(0, eq), true);
            const std::string value =
                eq == std::string::npos ? std::string() : httplib::detail::decode_url(pair.substr(eq + 1), true);
            parameters[key] = value;
        }
        start = end + 1;
    }
    return parameters;
}

// The client joins the hits of a batch with "%@\n"; a plain line break is read as well.
std::vector<std::string> splitBatch(const std::string& body) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < body.size()) {
        std::size_t end = body.find('\n', start);
        if (end == std::string::npos) end = body.size();
        std::string line = body.substr(start, end - start);
        if (line.size() >= 2 && line.compare(line.size() - 2, 2, "%@") == 0) line.resize(line.size() - 2);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty()) lines.push_back(std::move(line));
        start = end + 1;
    }
    return lines;
}

class Collector {
public:
    Collector(Database& db, std::filesystem::path containerDir) : m_db(db), m_containerDir(std::move(containerDir)) {}

    void collect(const httplib::Request& req, httplib::Response& res) {
        const auto question = req.target.find('?');
        std::string payload = req.body;
        if (payload.empty() && question != std::string::npos) payload = req.target.substr(question + 1);
        const Json parameters = parseForm(payload);
        if (parameters.empty()) return reply(res, envelope::failure(400, "Boş istek"), 400);
        store({parameters}, "single", req);
        res.status = 200;
        res.set_content("", "text/plain");
    }

    void batch(const httplib::Request& req, httplib::Response& res) {
        if (const int refusal = refuseBatches()) {
            res.status = refusal;
            if (refusal >= 300 && refusal < 400) res.set_header("Location", "/collect");
            return;
        }
        std::vector<Json> hits;
        for (const auto& line : splitBatch(req.body)) {
            Json parameters = parseForm(line);
            if (!parameters.empty()) hits.push_back(std::move(parameters));
        }
        if (hits.empty()) return reply(res, envelope::failure(400, "Boş istek"), 400);
        store(hits, "batch", req);
        res.status = 200;
        res.set_content("", "text/plain");
    }

    void container(const httplib::Request& req, httplib::Response& res) {
        const std::string id = req.get_param_value("id");
        // A preview link must carry its authorisation.
        if (req.has_param("rtc_preview") && req.get_param_value("rtc_auth").empty())
            return reply(res, envelope::failure(403, "Önizleme yetkisi yok"), 403);
        const bool safe = !id.empty() && id.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                                             "0123456789-_") == std::string::npos;
        std::ifstream file(m_containerDir / (id + ".json"), std::ios::binary);
        if (!safe || !file) return reply(res, envelope::failure(404, envelope::NotFoundText), 404);
        std::ostringstream text;
        text << file.rdbuf();
        // The container's hits go to the service that served it, at the address the client used.
        std::string body = text.str();
        const std::string host = req.get_header_value("Host");
        const bool usable = !host.empty() && host.find_first_not_of("abcdefghijklmnopqrstuvwxyz"
                                                                     "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-:[]") ==
                                                 std::string::npos;
        if (usable) {
            const std::string from = DefaultServiceRoot, to = "http://" + host;
            for (auto at = body.find(from); at != std::string::npos; at = body.find(from, at + to.size()))
                body.replace(at, from.size(), to);
        }
        res.status = 200;
        res.set_content(body, "application/json; charset=utf-8");
    }

    void demo(const httplib::Request& req, httplib::Response& res, const std::string& name) {
        if (!isLoopback(req.remote_addr))
            return reply(res, envelope::failure(403, "Bu işlem yalnızca bu makineden yapılabilir."), 403);
        if (name == "collector") {
            const Json body = Json::parse(req.body.empty() ? "{}" : req.body, nullptr, false);
            if (!body.is_object()) return reply(res, envelope::rejection("Geçersiz JSON gövdesi", {}), 400);
            int status = 0;
            if (auto it = body.find("refuseBatches"); it != body.end()) {
                if (it->is_number_integer()) status = it->get<int>();
                else if (it->is_boolean() && it->get<bool>()) status = 502;
            }
            if (status != 0 && (status < 100 || status > 599))
                return reply(res,
                             envelope::rejection("Geçersiz HTTP durumu", {{"refuseBatches", "Geçersiz HTTP durumu"}}),
                             400);
            m_db.execute("UPDATE analytics_collector SET refuse_batches = ? WHERE id = 1", {std::int64_t(status)});
            return reply(res, envelope::success(Json{{"refuseBatches", status}}));
        }
        if (name == "hits") {
            const std::int64_t since = req.has_param("since") ? std::atoll(req.get_param_value("since").c_str()) : 0;
            Json rows = m_db.query("SELECT id, received_at, channel, method, encoding, parameters FROM analytics_hits"
                                   " WHERE id > ? ORDER BY id",
                                   {since});
            Json hits = Json::array();
            for (auto& row : rows) {
                Json parameters = Json::parse(row["parameters"].get<std::string>(), nullptr, false);
                hits.push_back(Json{{"id", row["id"]},
                                    {"receivedAt", row["received_at"]},
                                    {"channel", row["channel"]},
                                    {"method", row["method"]},
                                    {"encoding", row["encoding"]},
                                    {"parameters", parameters.is_discarded() ? Json::object() : parameters}});
            }
            return reply(res, envelope::success(Json{{"count", hits.size()}, {"hits", std::move(hits)}}));
        }
        if (name == "hits/clear") {
            m_db.execute("DELETE FROM analytics_hits");
            return reply(res, envelope::success());
        }
        reply(res, envelope::failure(404, envelope::NotFoundText), 404);
    }

private:
    int refuseBatches() {
        return int(m_db.scalar("SELECT refuse_batches FROM analytics_collector WHERE id = 1"));
    }

    void store(const std::vector<Json>& hits, const char* channel, const httplib::Request& req) {
        std::string encoding = req.get_header_value("Content-Encoding");
        if (encoding.empty()) encoding = "identity";
        const std::int64_t now = nowSeconds();
        m_db.transaction([&] {
            for (const Json& parameters : hits)
                m_db.execute("INSERT INTO analytics_hits (received_at, channel, method, encoding, parameters)"
                             " VALUES (?, ?, ?, ?, ?)",
                             {now, std::string(channel), req.method, encoding, parameters.dump()});
        });
    }

    Database& m_db;
    std::filesystem::path m_containerDir;
};

} // namespace

std::filesystem::path defaultContainerDir() {
    return std::filesystem::path(EKINORA_ANALYTICS_CONTAINER_DIR);
}

void registerRoutes(httplib::Server& http, Database& db, BodyReader readBody, std::filesystem::path containerDir) {
    auto collector = std::make_shared<Collector>(db, std::move(containerDir));
    auto withBody = [readBody](auto handle) {
        return [readBody, handle](const httplib::Request& req, httplib::Response& res,
                                  const httplib::ContentReader& reader) {
            if (readBody(req, res, reader)) handle(req, res);
        };
    };
    auto collect = [collector](const httplib::Request& req, httplib::Response& res) { collector->collect(req, res); };
    http.Get("/collect", collect);
    http.Post("/collect", withBody(collect));
    http.Put("/collect", withBody(collect));
    http.Post("/batch", withBody([collector](const httplib::Request& req, httplib::Response& res) {
        collector->batch(req, res);
    }));
    http.Get("/tags/rtc/ios",
             [collector](const httplib::Request& req, httplib::Response& res) { collector->container(req, res); });
    http.Post("/_demo/collector", withBody([collector](const httplib::Request& req, httplib::Response& res) {
        collector->demo(req, res, "collector");
    }));
    http.Get("/_demo/hits",
             [collector](const httplib::Request& req, httplib::Response& res) { collector->demo(req, res, "hits"); });
    http.Post("/_demo/hits/clear", withBody([collector](const httplib::Request& req, httplib::Response& res) {
        collector->demo(req, res, "hits/clear");
    }));
}

} // namespace ekinora::server::analytics
