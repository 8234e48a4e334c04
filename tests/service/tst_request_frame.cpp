// The request frame as the service sees it: addresses, headers, parameters, redirects and the way a
// reply or a failure reaches the caller.

#include "FakePlatform.h"
#include "service/InlineRequest.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"
#include "service/TextHelpers.h"
#include "service/WSRequest.h"

#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::service;
using namespace ekinora::testing;
using platform::Json;

class RequestFrameTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        Roots::configure(QStringLiteral("http://svc.test"));
    }
    void cleanup() { delete fake; }

    void maintenanceRequestSendsDoTwiceWithoutContentTypeOrAuthorization() {
        MaintenanceRequest request;
        request.doParam = QStringLiteral("maintenance");
        request.checkMaintenance([](const Json&) {}, [](const Json&) {});
        QCOMPARE(fake->http->requests.size(), 1);
        const auto& r = fake->http->requests.first();
        QCOMPARE(r.method, QByteArray("GET"));
        QCOMPARE(r.url, QByteArray("http://svc.test/api/?do=maintenance&do=maintenance"));
        QVERIFY(!r.hasHeader("Authorization"));
        QVERIFY(!r.hasHeader("Content-Type"));
        QVERIFY(r.body.isEmpty());
    }

    void theTokenTravelsInTheHeaderAndAsBearerOnceSignedIn() {
        WSRequest request;
        request.doParam = QStringLiteral("popup");
        request.requestData([](const Json&) {}, [](const Json&) {});
        const auto& before = fake->http->requests.first();
        QCOMPARE(before.header("Authorization"), QByteArray("Bearer (null)"));
        QCOMPARE(before.header("Content-Type"), QByteArray("application/json; charset=UTF-8"));
        QCOMPARE(before.url, QByteArray("http://svc.test/api?do=popup"));

        fake->store->setString(StoreKey::Token, QStringLiteral("tok-1"));
        request.doParam = QStringLiteral("region/counties");
        request.cityID = 34;
        request.requestData([](const Json&) {}, [](const Json&) {});
        const auto& r = fake->http->requests.last();
        QCOMPARE(r.header("Authorization"), QByteArray("Bearer tok-1"));
        // Keys in ascending order; "/" stays unescaped.
        QCOMPARE(r.url, QByteArray("http://svc.test/api?bearer=tok-1&cityId=34&do=region/counties"));
    }

    void emptyTextIsSentNilIsLeftOutAndValuesAreEscaped() {
        WSRequest request;
        request.doParam = QStringLiteral("agricultural-news");
        request.pageToken = QString();     // an empty text: sent
        request.slugName = platform::nil(); // nil: left out
        request.agrivoCity = QStringLiteral("Şanlıurfa & Harran");
        request.requestData([](const Json&) {}, [](const Json&) {});
        const auto& r = fake->http->requests.first();
        QVERIFY(r.url.contains("ptoken=&") || r.url.endsWith("ptoken="));
        QVERIFY(!r.url.contains("slug"));
        QVERIFY(r.url.contains("city=%C5%9Eanl%C4%B1urfa%20%26%20Harran"));
        QCOMPARE(queryValues(r, QStringLiteral("city")).value(0), QStringLiteral("Şanlıurfa & Harran"));
    }

    void postParametersGoInAJsonBody() {
        fake->store->setString(StoreKey::Token, QStringLiteral("tok-2"));
        WSRequest request;
        request.doParam = QStringLiteral("event/join");
        request.objectID = 7;
        request.eventStatus = QStringLiteral("1");
        request.requestPostData([](const Json&) {}, [](const Json&) {});
        const auto& r = fake->http->requests.first();
        QCOMPARE(r.method, QByteArray("POST"));
        QCOMPARE(r.url, QByteArray("http://svc.test/api"));
        const QJsonObject body = QJsonDocument::fromJson(r.body).object();
        QCOMPARE(body.value("do").toString(), QStringLiteral("event/join"));
        QCOMPARE(body.value("id").toInt(), 7);
        QCOMPARE(body.value("status").toString(), QStringLiteral("1"));
        QCOMPARE(body.value("bearer").toString(), QStringLiteral("tok-2"));
    }

    void probeGoesToTheHostWithoutApi() {
        fake->store->setString(StoreKey::Token, QStringLiteral("t"));
        MaintenanceModeRequest request;
        request.checkMaintenance([](const Json&) {}, [](const Json&) {});
        const auto& r = fake->http->requests.first();
        QCOMPARE(r.url, QByteArray("http://svc.test/check?bearer=t"));
        QCOMPARE(r.header("Authorization"), QByteArray("Bearer t"));
        QVERIFY(!r.url.contains("test="));
    }

    void redirectedPostArrivesAsAGetWithOnlyAuthorization() {
        fake->store->setString(StoreKey::Token, QStringLiteral("old"));
        fake->http->on(QStringLiteral("/api"), redirectReply("http://svc.test/moved/", 307));
        fake->http->on(QStringLiteral("/moved/"), jsonReply(QJsonObject{{"status", 200}}));
        WSRequest request;
        request.doParam = QStringLiteral("popup");
        int successes = 0;
        request.requestPostData([&](const Json&) { ++successes; }, [](const Json&) {});
        // A logout between the request and the redirect changes the header that goes out.
        fake->store->setString(StoreKey::Token, QStringLiteral("new"));
        fake->http->flush();
        QCOMPARE(successes, 1);
        QCOMPARE(fake->http->requests.size(), 2);
        const auto& second = fake->http->requests.at(1);
        QCOMPARE(second.method, QByteArray("GET"));
        QCOMPARE(second.url, QByteArray("http://svc.test/moved/"));
        QVERIFY(second.body.isEmpty());
        QCOMPARE(second.headers.size(), 1);
        QCOMPARE(second.header("Authorization"), QByteArray("Bearer new"));
    }

    void withoutTheBlockTheTransportDefaultKeepsTheHeaders() {
        fake->http->on(QStringLiteral("/api/"), redirectReply("http://svc.test/elsewhere", 302));
        MaintenanceRequest request;
        request.doParam = QStringLiteral("maintenance");
        request.checkMaintenance([](const Json&) {}, [](const Json&) {});
        fake->http->flush();
        QCOMPARE(fake->http->requests.size(), 2);
        QVERIFY(fake->http->requests.at(1).hasHeader("User-Agent"));
        QVERIFY(!fake->http->requests.at(1).hasHeader("Authorization"));
    }

    void failureGetsTheDecodedBodyOrNilNeverTheError_data() {
        QTest::addColumn<HttpResponse>("response");
        QTest::addColumn<bool>("succeeds");
        QTest::addColumn<QString>("seen"); // description of what the callback got
        QTest::newRow("rejection is a success") << jsonReply(QJsonObject{{"status", 400}}) << true << "status";
        QTest::newRow("server error with json") << jsonReply(QJsonObject{{"message", "x"}}, 500) << false << "message";
        QTest::newRow("server error with html") << rawReply("<h1>500</h1>", 500) << false << "(null)";
        QTest::newRow("success that is not json") << rawReply("not json", 200, "application/json") << false << "(null)";
        QTest::newRow("json under a wrong type") << jsonReply(QJsonObject{{"a", 1}}, 200, "text/html") << false << "a";
        QTest::newRow("no network") << transportFailure() << false << "(null)";
        QTest::newRow("empty success") << rawReply("", 200, "") << true << "(null)";
    }
    void failureGetsTheDecodedBodyOrNilNeverTheError() {
        QFETCH(HttpResponse, response);
        QFETCH(bool, succeeds);
        QFETCH(QString, seen);
        fake->http->fallback([response](const HttpRequest&) { return response; });
        WSRequest request;
        request.doParam = QStringLiteral("popup");
        QString got;
        bool successCalled = false, failCalled = false;
        request.requestData(
            [&](const Json& v) {
                successCalled = true;
                got = platform::description(v);
            },
            [&](const Json& v) {
                failCalled = true;
                got = platform::description(v);
            });
        fake->http->flush();
        QCOMPARE(successCalled, succeeds);
        QCOMPARE(failCalled, !succeeds);
        QVERIFY2(got.contains(seen), qPrintable(got));
    }

    void inlineGetWithAJsonBodyKeepsItsBody() {
        fake->store->setString(StoreKey::Token, QStringLiteral("abc"));
        service::Parameters params{{QStringLiteral("hash"), QStringLiteral("h1")}};
        Json got;
        InlineRequest::request(InlineRequest::url(QStringLiteral("/?do=dealer/get-agricultural-pesticide-code")), "GET",
                               params, InlineRequest::Encoding::Json, InlineRequest::bearerHeaders(),
                               [&](const InlineRequest::Response& r) { got = r.json; });
        fake->http->fallback([](const HttpRequest&) { return jsonReply(QJsonObject{{"status", 200}}); });
        fake->http->flush();
        const auto& r = fake->http->requests.first();
        QCOMPARE(r.method, QByteArray("GET"));
        QCOMPARE(r.url, QByteArray("http://svc.test/api/?do=dealer/get-agricultural-pesticide-code"));
        QCOMPARE(r.header("Authorization"), QByteArray("Bearer abc"));
        QCOMPARE(QJsonDocument::fromJson(r.body).object().value("hash").toString(), QStringLiteral("h1"));
        QCOMPARE(platform::intValue(platform::member(got, "status")), 200);
    }

    void inlineRequestWithoutATokenStopsTheApplication() {
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, InlineRequest::bearerHeaders());
        QCOMPARE(fake->endings, QList<int>{platform::Application::FaultExitCode});
    }

    void productNamesLoseTheirMarkup() {
        QCOMPARE(plainProductName(QStringLiteral("Tarvenza<sup>&reg;</sup> 250 EC")), QStringLiteral("Tarvenza® 250 EC"));
        QCOMPARE(plainProductName(QStringLiteral("Kalkan <sup>Plus")), QStringLiteral("Kalkan Plus"));
        QCOMPARE(plainProductName(QStringLiteral("<sup>2</sup>X")), QStringLiteral("2X"));
    }

private:
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(RequestFrameTest)
#include "tst_request_frame.moc"
