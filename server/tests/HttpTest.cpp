#include "accounts/Accounts.h"
#include "core/Envelope.h"
#include "core/Server.h"

#include <QElapsedTimer>
#include <QTest>

#include "TestSupport.h"

#include <fstream>
#include <map>
#include <set>

using namespace ekinora::server;
using namespace testing;

// The service over HTTP: the envelope, who may send what, bodies, media, demo controls, connections.
class HttpTest : public ServiceTest {
    Q_OBJECT

    Reply get(const std::string& target, const httplib::Headers& headers = {}) {
        return s->get(target, headers);
    }
    Reply post(const std::string& target, const std::string& body) {
        return Reply::from(s->client->Post(target.c_str(), body, "application/json; charset=UTF-8"));
    }
    Reply demo(const std::string& name, const Json& body) { return post("/_demo/" + name, body.dump()); }

private slots:
    void init() {
        ServiceTest::init();
        s->client->set_url_encode(false);
    }

    void envelopeRepliesAreJsonWithHttp200() {
        for (const char* target :
             {"/api/?do=maintenance", "/api?do=maintenance", "/api/?do=no/such", "/api/"}) {
            const auto reply = get(target);
            QCOMPARE(reply.http, 200);
            QCOMPARE(q(reply.contentType), QStringLiteral("application/json; charset=utf-8"));
            QVERIFY2(reply.json.is_object(), target);
        }
        QCOMPARE(q(get("/api/?do=no/such").body),
                 QStringLiteral(R"({"status":404,"message":"Bilinmeyen komut","data":null})"));
        QCOMPARE(get("/api/").status(), 404);

        // Outside /api: a real 404, still with an envelope.
        const auto missing = get("/nowhere");
        QCOMPARE(missing.http, 404);
        QCOMPARE(missing.status(), 404);
        QCOMPARE(Reply::from(s->client->Put("/api/?do=maintenance", "{}", "application/json")).http, 404);
    }

    void firstDoDecidesAndBodyFillsIn() {
        // "do" twice, as the maintenance request sends it: the first one counts.
        QVERIFY(get("/api/?do=maintenance&do=popup").json["data"].contains("maintenance"));
        QCOMPARE(get("/api/?do=no/such&do=maintenance").status(), 404);
        // The command in the URL and the token in a JSON body; the command only in the body; the
        // query's "do" beats the body's.
        QCOMPARE(post("/api/?do=popup", R"({"bearer":")" + tokenOf("farmer") + R"("})").status(), 200);
        QVERIFY(post("/api/", R"({"do":"app/version"})").json["data"].contains("version"));
        QVERIFY(post("/api/?do=maintenance", R"({"do":"app/version"})").json["data"].contains("maintenance"));
    }

    void getWithJsonBodyIsReadAndKeepsTheConnection() {
        httplib::Request request;
        request.method = "GET";
        request.path = "/api/";
        request.set_header("Authorization", "Bearer " + tokenOf("farmer"));
        request.set_header("Content-Type", "application/json");
        request.body = R"({"do":"popup"})";
        QVERIFY(Reply::from(s->client->send(request)).json["data"].contains("popup"));
        // The next request on the same connection is parsed cleanly, so the body was consumed.
        QCOMPARE(get("/api/?do=maintenance").status(), 200);
    }

    // Maintenance and the probe, switched by the demo controls.
    void maintenanceAndProbeShapes() {
        QCOMPARE(q(get("/api/?do=maintenance").body),
                 QStringLiteral(
                     R"({"status":200,"message":{"text":"Sistemimizde bakım çalışması yapılmaktadır. )"
                     R"(Lütfen daha sonra tekrar deneyiniz."},"errors":{},"data":{"maintenance":false}})"));
        QCOMPARE(demo("maintenance", {{"on", true}, {"text", "Saat 14:00'e kadar bakımdayız."}}).status(), 200);
        QCOMPARE(
            q(get("/api/?do=maintenance").body),
            QStringLiteral(R"({"status":200,"message":{"text":"Saat 14:00'e kadar bakımdayız."},"errors":{},)"
                           R"("data":{"maintenance":true}})"));
        s->server->setMaintenance(true);
        QVERIFY(
            get("/api/?do=maintenance").json["message"]["text"].get<std::string>().rfind("Sistemimizde", 0) ==
            0);

        QCOMPARE(q(get("/check").body), QStringLiteral(R"({"status":true,"message":""})"));
        s->server->setProbeDown(true);
        QCOMPARE(q(get("/check?test=1").body),
                 QStringLiteral(R"({"status":false,"message":"Sistem şu anda hizmet veremiyor. )"
                                R"(Lütfen daha sonra tekrar deneyiniz."})"));
        demo("check", {{"down", true}, {"message", "Sunucu taşınıyor"}});
        QCOMPARE(q(get("/check").body), QStringLiteral(R"({"status":false,"message":"Sunucu taşınıyor"})"));
        // The probe is not a command: under /api it is unknown.
        QCOMPARE(get("/api/?do=check").status(), 404);
    }

    void popupRecord() {
        const auto auth = s->bearer(tokenOf("farmer"));
        const Json popup = get("/api/?do=popup", auth).json["data"]["popup"];
        QVERIFY((testing::keys(popup) == std::vector<std::string>{"id", "header", "content", "file_path",
                                                                  "pest_id", "pest_file_path", "pest_name"}));
        // Both pictures are absolute addresses on this service, and they load.
        for (const char* key : {"file_path", "pest_file_path"}) {
            const auto url = popup[key].get<std::string>();
            QVERIFY2(url.rfind(s->server->baseUrl() + "/static/", 0) == 0, url.c_str());
            const auto picture = get(url.substr(s->server->baseUrl().size()));
            QCOMPARE(q(picture.contentType), QStringLiteral("image/svg+xml"));
        }

        // Switched off: "data"."popup" is null; the inactive notice never shows.
        s->server->setPopupActive(false);
        QCOMPARE(q(get("/api/?do=popup", auth).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"popup":null}})"));
    }

    void requestsAreRecordedAsReceived() {
        s->server->clearRequests();
        get("/api/?do=maintenance&do=maintenance&q=%C3%A7ift%C3%A7i+1", {{"Authorization", "Bearer (null)"}});
        get("/api/?do=maintenance");
        Reply::from(
            s->client->Post("/api/?do=popup", {{"X-Extra", "1"}}, R"({"bearer":"x"})", "application/json"));

        const auto recorded = s->server->requests();
        QCOMPARE(recorded.size(), size_t(3));
        QCOMPARE(q(recorded[0].target),
                 QStringLiteral("/api/?do=maintenance&do=maintenance&q=%C3%A7ift%C3%A7i+1"));
        QCOMPARE(q(recorded[0].path + " " + recorded[0].method), QStringLiteral("/api/ GET"));
        auto header = [](const RecordedRequest& r, const std::string& name) -> std::optional<std::string> {
            for (const auto& [n, v] : r.headers)
                if (n == name) return v;
            return std::nullopt;
        };
        QCOMPARE(q(header(recorded[0], "Authorization").value_or("absent")), QStringLiteral("Bearer (null)"));
        // Only what the client sent: nothing the HTTP library adds for itself.
        QVERIFY(!header(recorded[1], "Authorization") && !header(recorded[1], "REMOTE_ADDR"));
        QVERIFY(header(recorded[1], "Host"));
        QCOMPARE(q(recorded[2].method + " " + recorded[2].body), QStringLiteral(R"(POST {"bearer":"x"})"));
        QCOMPARE(q(header(recorded[2], "X-Extra").value_or("")), QStringLiteral("1"));

        // The log keeps the most recent ones.
        RequestLog log;
        for (size_t i = 0; i < RequestLog::Capacity + 5; ++i)
            log.add({"GET", "/api", "/api?n=" + std::to_string(i), {}, {}});
        QCOMPARE(log.all().size(), RequestLog::Capacity);
        QCOMPARE(q(log.all().front().target), QStringLiteral("/api?n=5"));
    }

    void staticFiles() {
        auto part =
            Reply::from(s->client->Get("/static/media/popup/bahar-kampanyasi.svg", {{"Range", "bytes=0-3"}}));
        // Ranges work, so players can seek in videos.
        QCOMPARE(part.http, 206);
        QCOMPARE(q(part.body), QStringLiteral("<svg"));

        for (const char* target :
             {"/static/../CMakeLists.txt", "/static/%2e%2e/data/turkey-regions.json",
              "/static/media/../../data/turkey-regions.json", "/static/media/%2E%2E/%2E%2E/main.cpp",
              "/static/%2Fetc%2Fpasswd", "/static/media/popup/yok.svg", "/static/media/popup", "/static/",
              "/static/media/popup/.gizli.svg"}) {
            const auto reply = get(target);
            QVERIFY2(reply.http == 404 || reply.http == 400, target);
            QVERIFY2(reply.body.find("\"cities\"") == std::string::npos &&
                         reply.body.find("add_library") == std::string::npos,
                     target);
        }

        // Another folder, with only the types it knows served.
        QTemporaryDir dir;
        const std::string root = dir.path().toStdString();
        std::ofstream(root + "/rapor.pdf") << "%PDF-1.4 demo";
        std::ofstream(root + "/not.exe") << "MZ";
        ServerOptions options;
        options.staticDir = root;
        Server server(options);
        httplib::Client client("127.0.0.1", server.start());
        QCOMPARE(q(client.Get("/static/rapor.pdf")->get_header_value("Content-Type")),
                 QStringLiteral("application/pdf"));
        QCOMPARE(client.Get("/static/not.exe")->status, 404);
        QCOMPARE(client.Get("/static/media/popup/bahar-kampanyasi.svg")->status, 404);
    }

    void demoControls() {
        demo("popup", {{"on", false}});
        QVERIFY(get("/api/?do=popup&bearer=" + tokenOf("farmer")).json["data"]["popup"].is_null());
        // The published version, and the store page the update notice opens shows it.
        demo("version", {{"version", "2.0.0"}});
        const Json version = get("/api/?do=app/version").json["data"];
        QCOMPARE(q(version["version"].get<std::string>()), QStringLiteral("2.0.0"));
        QCOMPARE(q(version["storeUrl"].get<std::string>()), q(s->server->baseUrl() + "/store/ekinora"));
        const auto page = get("/store/ekinora");
        QCOMPARE(q(page.contentType), QStringLiteral("text/html; charset=utf-8"));
        QVERIFY(page.body.find("2.0.0") != std::string::npos);
        QCOMPARE(demo("version", Json::object()).http, 400);
        QCOMPARE(post("/_demo/maintenance", "not json").http, 400);
        QCOMPARE(get("/_demo/maintenance").http, 404);
        QCOMPARE(demo("nothing", Json::object()).http, 404);

        // The request list: the app's traffic only, not the controls themselves.
        s->server->clearRequests();
        get("/api/?do=maintenance&do=maintenance", {{"Authorization", "Bearer (null)"}});
        const auto list = get("/_demo/requests").json;
        QCOMPARE(list.size(), size_t(1));
        QCOMPARE(q(list[0]["target"].get<std::string>()),
                 QStringLiteral("/api/?do=maintenance&do=maintenance"));
        QVERIFY(list[0]["headers"].dump().find(R"x(["Authorization","Bearer (null)"])x") !=
                std::string::npos);
        QCOMPARE(demo("requests/clear", Json::object()).status(), 200);
        QVERIFY(s->server->requests().empty());
    }

    // A phone keeps its connection open between requests, and the service holds a worker for each
    // open connection until it closes: a dozen idle phones must not make the next one wait.
    void idleConnectionsDoNotHoldUpOthers() {
        QElapsedTimer timer;
        timer.start();
        std::vector<std::unique_ptr<httplib::Client>> idle;
        for (int i = 0; i < 12; ++i) {
            idle.push_back(std::make_unique<httplib::Client>("127.0.0.1", s->server->port()));
            idle.back()->set_keep_alive(true);
            QCOMPARE(Reply::from(idle.back()->Get("/api/?do=maintenance")).http, 200);
        }
        QCOMPARE(get("/api/?do=maintenance").http, 200);
        // Waiting for a kept-alive connection to time out would take seconds.
        QVERIFY2(timer.elapsed() < 2000, QByteArray::number(timer.elapsed()));
    }

    void serverLifecycle() {
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, s->server->start());
        s->server->stop();
        s->server->stop();
        QVERIFY(!s->client->Get("/check"));

        // The port is taken: start reports it.
        Server first{ServerOptions{}};
        ServerOptions taken;
        taken.port = first.start();
        Server second(taken);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, second.start());
    }
};

QTEST_GUILESS_MAIN(HttpTest)
#include "HttpTest.moc"
