#pragma once

#include "accounts/DemoAccounts.h"
#include "core/Database.h"
#include "core/Server.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace testing {

using Json = nlohmann::ordered_json;

// JSON values compared as their text, which also names them in a failure.
#define JCOMPARE(a, b) QCOMPARE(testing::q(testing::Json(a)), testing::q(testing::Json(b)))

inline QString q(const std::string& s) {
    return QString::fromStdString(s);
}
inline QString q(const Json& j) {
    return QString::fromStdString(j.dump());
}

inline std::vector<std::string> keys(const Json& object) {
    std::vector<std::string> out;
    for (auto it = object.begin(); it != object.end(); ++it)
        out.push_back(it.key());
    return out;
}

inline const std::string Expired =
    R"({"status":401,"message":"Oturumunuz sona erdi, lütfen tekrar giriş yapınız.","data":null})";

inline const std::string& tokenOf(const char* type) {
    return ekinora::server::accounts::demoAccount(type).token;
}

// The demo accounts' fixed tokens, one of each role.
inline const std::string Farmer = tokenOf("farmer");
inline const std::string Member = tokenOf("loyalty");
inline const std::string Dealer = tokenOf("dealer");
inline const std::string Staff = tokenOf("adminUser");

struct Reply {
    int http = 0;
    std::string contentType;
    std::string body;
    Json json; // null when the body is not JSON

    static Reply from(const httplib::Result& result) {
        Reply r;
        if (!result) return r;
        r.http = result->status;
        r.contentType = result->get_header_value("Content-Type");
        r.body = result->body;
        r.json = Json::parse(r.body, nullptr, false);
        if (r.json.is_discarded()) r.json = nullptr;
        return r;
    }
    int status() const { return json.is_object() && json.contains("status") ? json["status"].get<int>() : 0; }
};

// The service on a file database, with a second connection to look at what it stored, a clock the
// test may set and move (0: the system's), and the requests as the app sends them.
struct Service {
    QTemporaryDir dir;
    std::shared_ptr<std::atomic<std::int64_t>> now = std::make_shared<std::atomic<std::int64_t>>(0);
    std::unique_ptr<ekinora::server::Server> server;
    std::unique_ptr<httplib::Client> client;
    std::unique_ptr<ekinora::server::Database> db;

    Service() { start(); }

    // Again on the same database, as after a restart.
    void start() {
        client.reset();
        server.reset();
        ekinora::server::ServerOptions options;
        options.dbPath = dir.filePath("service.db").toStdString();
        options.demo = true; // the demo tokens and SMS codes in the replies
        options.clock = [now = now] { return now->load() ? now->load() : ekinora::server::systemSeconds(); };
        server = std::make_unique<ekinora::server::Server>(options);
        client = std::make_unique<httplib::Client>("127.0.0.1", server->start());
        if (!db) db = std::make_unique<ekinora::server::Database>(options.dbPath);
    }

    static httplib::Headers bearer(const std::string& token) {
        return {{"Authorization", "Bearer " + token}};
    }

    Reply get(const std::string& target, const httplib::Headers& headers = {}) {
        return Reply::from(client->Get(target.c_str(), headers));
    }
    Reply get(const std::string& target, const std::string& token) { return get(target, bearer(token)); }
    // As the app posts: "do" in the URL, the parameters as a JSON body.
    Reply post(const std::string& command, const Json& body, const httplib::Headers& headers = {}) {
        return Reply::from(client->Post(("/api/?do=" + command).c_str(), headers, body.dump(),
                                        "application/json; charset=UTF-8"));
    }
    Reply post(const std::string& command, const Json& body, const std::string& token) {
        return post(command, body, bearer(token));
    }

    // The hash of a verified registration code for the phone.
    std::string verifiedHash(const std::string& phone) {
        const Json data = get("/api/?do=sms/get&type=register&phoneNumber=" + phone).json["data"];
        const std::string hash = data["hash"];
        get("/api/?do=sms/check&type=register&hash=" + hash + "&code=" + data["code"].get<std::string>());
        return hash;
    }

    // The reply of an SMS login for the phone.
    Reply login(const std::string& phone) {
        const Json data = get("/api/?do=sms/get&phoneNumber=" + phone).json["data"];
        return get("/api/?do=farmer/login&type=login&deviceType=2&hash=" + data["hash"].get<std::string>() +
                   "&code=" + data["code"].get<std::string>());
    }

    // How many of n requests sent at once, each on a connection of its own, the service accepted.
    int acceptedAtOnce(int n, const std::function<httplib::Result(httplib::Client&)>& request) {
        std::atomic<int> accepted{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < n; ++i)
            threads.emplace_back([&, port = server->port()] {
                httplib::Client client("127.0.0.1", port);
                if (Reply::from(request(client)).status() == 200) ++accepted;
            });
        for (auto& thread : threads)
            thread.join();
        return accepted;
    }
};

// Each test on a service of its own, its clock at the given time (0: the system's).
class ServiceTest : public QObject {
    Q_OBJECT

    const std::int64_t m_start;

protected:
    explicit ServiceTest(std::int64_t now = 0) : m_start(now) {}
    std::unique_ptr<Service> s;

protected slots:
    void init() {
        s = std::make_unique<Service>();
        *s->now = m_start;
    }
    void cleanup() { s.reset(); }
};

} // namespace testing
