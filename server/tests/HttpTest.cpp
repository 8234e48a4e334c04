#include "accounts/DemoAccounts.h"
#include "core/Server.h"

#include <QElapsedTimer>
#include <QTest>

#include "TestSupport.h"

#include <fstream>

using namespace ekinora::server;
using testing::Json;
using testing::q;
using testing::Reply;

namespace {

const std::string FarmerToken = accounts::demoAccount("farmer").token;
const std::string Expired =
    R"({"status":401,"message":"Oturumunuz sona erdi, lütfen tekrar giriş yapınız.","data":null})";

} // namespace

class HttpTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Server> m_server;
    std::unique_ptr<httplib::Client> m_client;

    Reply get(const std::string& target, const httplib::Headers& headers = {}) {
        return Reply::from(m_client->Get(target.c_str(), headers));
    }
    Reply post(const std::string& target, const std::string& body, const httplib::Headers& headers = {}) {
        return Reply::from(m_client->Post(target.c_str(), headers, body, "application/json; charset=UTF-8"));
    }
    Reply demo(const std::string& name, const Json& body) { return post("/_demo/" + name, body.dump()); }

private slots:
    void init() {
        m_server = std::make_unique<Server>(ServerOptions{});
        const int port = m_server->start();
        QVERIFY(port > 0);
        QCOMPARE(q(m_server->baseUrl()), QStringLiteral("http://127.0.0.1:%1").arg(port));
        m_client = std::make_unique<httplib::Client>("127.0.0.1", port);
        m_client->set_url_encode(false);
    }

    void cleanup() {
        m_client.reset();
        m_server.reset();
    }

    void envelopeRepliesAreJsonWithHttp200() {
        for (const char* target :
             {"/api/?do=maintenance", "/api?do=maintenance", "/api/?do=no/such", "/api/", "/api/?do=popup"}) {
            const auto reply = get(target);
            QCOMPARE(reply.http, 200);
            QCOMPARE(q(reply.contentType), QStringLiteral("application/json; charset=utf-8"));
            QVERIFY2(reply.json.is_object(), target);
        }
        const auto unknown = get("/api/?do=no/such");
        QCOMPARE(q(unknown.body),
                 QStringLiteral(R"({"status":404,"message":"Bilinmeyen komut","data":null})"));
        QCOMPARE(get("/api/").json["status"].get<int>(), 404);

        // Outside /api: a real 404, still with an envelope.
        const auto missing = get("/nowhere");
        QCOMPARE(missing.http, 404);
        QCOMPARE(missing.json["status"].get<int>(), 404);
        QCOMPARE(Reply::from(m_client->Put("/api/?do=maintenance", "{}", "application/json")).http, 404);
    }

    void firstDoDecidesAndBodyFillsIn() {
        // "do" twice, as the maintenance request sends it: the first one counts.
        auto reply = get("/api/?do=maintenance&do=popup");
        QVERIFY(reply.json["data"].contains("maintenance"));
        reply = get("/api/?do=no/such&do=maintenance");
        QCOMPARE(reply.json["status"].get<int>(), 404);

        // POST with the command in the URL and the parameters in a JSON body.
        reply = post("/api/?do=popup", R"({"bearer":")" + FarmerToken + R"("})");
        QCOMPARE(reply.json["status"].get<int>(), 200);
        // The command only in the body.
        reply = post("/api/", R"({"do":"app/version"})");
        QVERIFY(reply.json["data"].contains("version"));
        // The query's "do" beats the body's.
        reply = post("/api/?do=maintenance", R"({"do":"app/version"})");
        QVERIFY(reply.json["data"].contains("maintenance"));
    }

    void getWithJsonBodyIsReadAndKeepsTheConnection() {
        httplib::Request request;
        request.method = "GET";
        request.path = "/api/";
        request.set_header("Authorization", "Bearer " + FarmerToken);
        request.set_header("Content-Type", "application/json");
        request.body = R"({"do":"popup"})";
        auto first = Reply::from(m_client->send(request));
        QCOMPARE(first.json["status"].get<int>(), 200);
        QVERIFY(first.json["data"].contains("popup"));
        // The next request on the same connection is parsed cleanly, so the body was consumed.
        QCOMPARE(get("/api/?do=maintenance").json["status"].get<int>(), 200);

        const auto recorded = m_server->requests();
        QCOMPARE(recorded.size(), size_t(2));
        QCOMPARE(q(recorded[0].method), QStringLiteral("GET"));
        QCOMPARE(q(recorded[0].body), QStringLiteral(R"({"do":"popup"})"));
    }

    void authorisation_data() {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("authorization"); // "-": header not sent
        QTest::addColumn<int>("status");

        const auto token = q(FarmerToken);
        QTest::newRow("no token") << "/api/?do=popup"
                                  << "-" << 401;
        QTest::newRow("Bearer (null)") << "/api/?do=popup"
                                       << "Bearer (null)" << 401;
        QTest::newRow("unknown token") << "/api/?do=popup"
                                       << "Bearer nope" << 401;
        QTest::newRow("header") << "/api/?do=popup"
                                << "Bearer " + token << 200;
        QTest::newRow("bearer parameter") << "/api/?do=popup&bearer=" + token << "-" << 200;
        QTest::newRow("(null) header, bearer parameter")
            << "/api/?do=popup&bearer=" + token << "Bearer (null)" << 200;
        QTest::newRow("parameter with scheme") << "/api/?do=popup&bearer=Bearer%20" + token << "-" << 200;
        QTest::newRow("unknown header wins over parameter")
            << "/api/?do=popup&bearer=" + token << "Bearer nope" << 401;
        QTest::newRow("empty header and parameter") << "/api/?do=popup&bearer="
                                                    << "Bearer " << 401;
        QTest::newRow("public command ignores a bad token") << "/api/?do=maintenance"
                                                            << "Bearer nope" << 200;
    }

    void authorisation() {
        QFETCH(QString, target);
        QFETCH(QString, authorization);
        QFETCH(int, status);
        httplib::Headers headers;
        if (authorization != "-") headers.emplace("Authorization", authorization.toStdString());
        const auto reply = get(target.toStdString(), headers);
        QCOMPARE(reply.http, 200);
        QCOMPARE(reply.json["status"].get<int>(), status);
        if (status == 401) QCOMPARE(q(reply.body), q(Expired));
    }

    void maintenanceShapes() {
        QCOMPARE(q(get("/api/?do=maintenance").body),
                 QStringLiteral(
                     R"({"status":200,"message":{"text":"Sistemimizde bakım çalışması yapılmaktadır. )"
                     R"(Lütfen daha sonra tekrar deneyiniz."},"errors":{},"data":{"maintenance":false}})"));
        m_server->setMaintenance(true, "Saat 14:00'e kadar bakımdayız.");
        QCOMPARE(
            q(get("/api/?do=maintenance&do=maintenance").body),
            QStringLiteral(R"({"status":200,"message":{"text":"Saat 14:00'e kadar bakımdayız."},"errors":{},)"
                           R"("data":{"maintenance":true}})"));
        m_server->setMaintenance(true);
        QVERIFY(
            get("/api/?do=maintenance").json["message"]["text"].get<std::string>().rfind("Sistemimizde", 0) ==
            0);
        m_server->setMaintenance(false);
        QCOMPARE(get("/api/?do=maintenance").json["data"]["maintenance"].get<bool>(), false);
    }

    void probeShapes() {
        QCOMPARE(q(get("/check").body), QStringLiteral(R"({"status":true,"message":""})"));
        m_server->setProbeDown(true);
        QCOMPARE(q(get("/check?test=1").body),
                 QStringLiteral(R"({"status":false,"message":"Sistem şu anda hizmet veremiyor. )"
                                R"(Lütfen daha sonra tekrar deneyiniz."})"));
        m_server->setProbeDown(true, "Sunucu taşınıyor");
        QCOMPARE(q(get("/check").body), QStringLiteral(R"({"status":false,"message":"Sunucu taşınıyor"})"));
        m_server->setProbeDown(false);
        QCOMPARE(get("/check").json["status"].get<bool>(), true);
        // The probe is not a command: under /api it is unknown.
        QCOMPARE(get("/api/?do=check").json["status"].get<int>(), 404);
    }

    void popupRecord() {
        const httplib::Headers auth{{"Authorization", "Bearer " + FarmerToken}};
        auto reply = get("/api/?do=popup", auth);
        QCOMPARE(reply.json["status"].get<int>(), 200);
        const Json popup = reply.json["data"]["popup"];
        QVERIFY(popup.is_object());
        for (const char* key : {"header", "content", "file_path", "pest_id", "pest_file_path", "pest_name"})
            QVERIFY2(popup.contains(key), key);
        QCOMPARE(q(popup["pest_name"].get<std::string>()), QStringLiteral("Tarvenza<sup>&reg;</sup> 250 EC"));
        QVERIFY(popup["pest_id"].is_number());
        QVERIFY(popup["content"].get<std::string>().find("<p>") != std::string::npos);

        // Both pictures are absolute addresses on this service, and they load.
        for (const char* key : {"file_path", "pest_file_path"}) {
            const auto url = popup[key].get<std::string>();
            QVERIFY2(url.rfind(m_server->baseUrl() + "/static/", 0) == 0, url.c_str());
            const auto picture = get(url.substr(m_server->baseUrl().size()));
            QCOMPARE(picture.http, 200);
            QCOMPARE(q(picture.contentType), QStringLiteral("image/svg+xml"));
            QVERIFY(picture.body.find("<svg") != std::string::npos);
        }

        QCOMPARE(q(get("/api/?do=popup").body), q(Expired));

        // Switched off: "data"."popup" is null; the inactive notice never shows.
        m_server->setPopupActive(false);
        reply = get("/api/?do=popup", auth);
        QCOMPARE(q(reply.body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"popup":null}})"));
        m_server->setPopupActive(true);
        QVERIFY(get("/api/?do=popup", auth).json["data"]["popup"].is_object());
    }

    void publishedVersionAndStorePage() {
        auto reply = get("/api/?do=app/version");
        QCOMPARE(q(reply.json["data"]["version"].get<std::string>()), QStringLiteral("1.4.0"));
        const auto storeUrl = reply.json["data"]["storeUrl"].get<std::string>();
        QCOMPARE(q(storeUrl), q(m_server->baseUrl() + "/store/ekinora"));
        QVERIFY(!reply.json["data"]["notes"].get<std::string>().empty());

        m_server->setPublishedVersion("1.5.2");
        QCOMPARE(q(get("/api/?do=app/version").json["data"]["version"].get<std::string>()),
                 QStringLiteral("1.5.2"));
        const auto page = get("/store/ekinora");
        QCOMPARE(page.http, 200);
        QCOMPARE(q(page.contentType), QStringLiteral("text/html; charset=utf-8"));
        QVERIFY(page.body.find("1.5.2") != std::string::npos);
    }

    void requestsAreRecordedAsReceived() {
        m_server->clearRequests();
        get("/api/?do=maintenance&do=maintenance&q=%C3%A7ift%C3%A7i+1", {{"Authorization", "Bearer (null)"}});
        get("/api/?do=maintenance");
        post("/api/?do=popup", R"({"bearer":"x"})", {{"X-Extra", "1"}});

        const auto recorded = m_server->requests();
        QCOMPARE(recorded.size(), size_t(3));
        QCOMPARE(q(recorded[0].target),
                 QStringLiteral("/api/?do=maintenance&do=maintenance&q=%C3%A7ift%C3%A7i+1"));
        QCOMPARE(q(recorded[0].path), QStringLiteral("/api/"));
        QCOMPARE(q(recorded[0].method), QStringLiteral("GET"));

        auto header = [](const RecordedRequest& r, const std::string& name) -> std::optional<std::string> {
            for (const auto& [n, v] : r.headers)
                if (n == name) return v;
            return std::nullopt;
        };
        QCOMPARE(q(header(recorded[0], "Authorization").value_or("absent")), QStringLiteral("Bearer (null)"));
        QVERIFY(!header(recorded[1], "Authorization"));
        // Only what the client sent: nothing the HTTP library adds for itself.
        QVERIFY(!header(recorded[1], "REMOTE_ADDR") && !header(recorded[1], "LOCAL_PORT"));
        QVERIFY(header(recorded[1], "Host"));
        QCOMPARE(q(recorded[2].method), QStringLiteral("POST"));
        QCOMPARE(q(recorded[2].body), QStringLiteral(R"({"bearer":"x"})"));
        QCOMPARE(q(header(recorded[2], "X-Extra").value_or("")), QStringLiteral("1"));

        m_server->clearRequests();
        QVERIFY(m_server->requests().empty());
    }

    void staticFiles() {
        auto svg = get("/static/media/popup/bahar-kampanyasi.svg");
        QCOMPARE(svg.http, 200);
        QCOMPARE(q(svg.contentType), QStringLiteral("image/svg+xml"));

        // Ranges work, so players can seek in videos.
        auto part =
            Reply::from(m_client->Get("/static/media/popup/bahar-kampanyasi.svg", {{"Range", "bytes=0-3"}}));
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
    }

    void staticFolderOption() {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const std::string root = dir.path().toStdString();
        std::ofstream(root + "/rapor.pdf") << "%PDF-1.4 demo";
        std::ofstream(root + "/veri.json") << "{}";
        std::ofstream(root + "/not.exe") << "MZ";
        ServerOptions options;
        options.staticDir = root;
        Server server(options);
        httplib::Client client("127.0.0.1", server.start());
        QCOMPARE(q(client.Get("/static/rapor.pdf")->get_header_value("Content-Type")),
                 QStringLiteral("application/pdf"));
        QCOMPARE(q(client.Get("/static/veri.json")->get_header_value("Content-Type")),
                 QStringLiteral("application/json; charset=utf-8"));
        QCOMPARE(client.Get("/static/not.exe")->status, 404);
        QCOMPARE(client.Get("/static/media/popup/bahar-kampanyasi.svg")->status, 404);
    }

    void demoControls() {
        auto reply = demo("maintenance", {{"on", true}, {"text", "Kısa bir bakım"}});
        QCOMPARE(reply.json["status"].get<int>(), 200);
        QCOMPARE(q(get("/api/?do=maintenance").json["message"]["text"].get<std::string>()),
                 QStringLiteral("Kısa bir bakım"));
        demo("maintenance", {{"on", false}});
        QCOMPARE(get("/api/?do=maintenance").json["data"]["maintenance"].get<bool>(), false);

        demo("check", {{"down", true}, {"message", "Kapalı"}});
        QCOMPARE(q(get("/check").body), QStringLiteral(R"({"status":false,"message":"Kapalı"})"));
        demo("check", {{"down", false}});
        QCOMPARE(get("/check").json["status"].get<bool>(), true);

        demo("popup", {{"on", false}});
        QVERIFY(get("/api/?do=popup&bearer=" + FarmerToken).json["data"]["popup"].is_null());
        demo("popup", {{"on", true}});
        QVERIFY(get("/api/?do=popup&bearer=" + FarmerToken).json["data"]["popup"].is_object());

        demo("version", {{"version", "2.0.0"}});
        QCOMPARE(q(get("/api/?do=app/version").json["data"]["version"].get<std::string>()),
                 QStringLiteral("2.0.0"));
        QCOMPARE(demo("version", Json::object()).http, 400);
        QCOMPARE(post("/_demo/maintenance", "not json").http, 400);
        QCOMPARE(get("/_demo/maintenance").http, 404);
        QCOMPARE(demo("nothing", Json::object()).http, 404);

        // The request list: the app's traffic only, not the controls themselves.
        m_server->clearRequests();
        get("/api/?do=maintenance&do=maintenance", {{"Authorization", "Bearer (null)"}});
        const auto list = get("/_demo/requests").json;
        QVERIFY(list.is_array());
        QCOMPARE(list.size(), size_t(1));
        QCOMPARE(q(list[0]["target"].get<std::string>()),
                 QStringLiteral("/api/?do=maintenance&do=maintenance"));
        QVERIFY(list[0]["headers"].dump().find(R"x(["Authorization","Bearer (null)"])x") !=
                std::string::npos);
        QCOMPARE(demo("requests/clear", Json::object()).json["status"].get<int>(), 200);
        QVERIFY(m_server->requests().empty());
    }

    void requestListKeepsTheMostRecent() {
        RequestLog log;
        for (size_t i = 0; i < RequestLog::Capacity + 5; ++i)
            log.add({"GET", "/api", "/api?n=" + std::to_string(i), {}, {}});
        const auto all = log.all();
        QCOMPARE(all.size(), RequestLog::Capacity);
        QCOMPARE(q(all.front().target), QStringLiteral("/api?n=5"));
        QCOMPARE(q(all.back().target), q("/api?n=" + std::to_string(RequestLog::Capacity + 4)));
    }

    // A phone keeps its connection open between requests, and the service holds a worker for each
    // open connection until it closes: a dozen idle phones must not make the next one wait.
    void idleConnectionsDoNotHoldUpOthers() {
        QElapsedTimer timer;
        timer.start();
        std::vector<std::unique_ptr<httplib::Client>> idle;
        for (int i = 0; i < 12; ++i) {
            idle.push_back(std::make_unique<httplib::Client>("127.0.0.1", m_server->port()));
            idle.back()->set_keep_alive(true);
            QCOMPARE(Reply::from(idle.back()->Get("/api/?do=maintenance")).http, 200);
        }
        QCOMPARE(get("/api/?do=maintenance").http, 200);
        // Waiting for a kept-alive connection to time out would take seconds.
        QVERIFY2(timer.elapsed() < 2000, QByteArray::number(timer.elapsed()));
    }

    void serverLifecycle() {
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, m_server->start());
        m_server->stop();
        m_server->stop();
        QVERIFY(!m_client->Get("/check"));

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
