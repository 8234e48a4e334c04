#include "core/ApiCall.h"
#include "core/Auth.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using testing::q;

class RequestParsingTest : public QObject {
    Q_OBJECT

private slots:
    void queryItemsAreDecodedInOrder() {
        const auto items =
            parseQuery("do=sms%2Fget&phoneNumber=0532+100&do=popup&flag&empty=&%C3%A7=%C3%BC%zz");
        QCOMPARE(items.size(), size_t(6));
        QCOMPARE(q(items[0].second), QStringLiteral("sms/get"));
        QCOMPARE(q(items[1].second), QStringLiteral("0532 100"));
        QCOMPARE(q(items[2].first), QStringLiteral("do"));
        QCOMPARE(q(items[3].first), QStringLiteral("flag"));
        QCOMPARE(q(items[3].second), QString());
        QCOMPARE(q(items[4].second), QString());
        // A broken escape stays as it was.
        QCOMPARE(q(items[5].first), QStringLiteral("ç"));
        QCOMPARE(q(items[5].second), QStringLiteral("ü%zz"));
        QVERIFY(parseQuery("").empty());
        QCOMPARE(parseQuery("&&a=1&").size(), size_t(1));
    }

    void queryWinsOverBodyAndFirstValueCounts() {
        auto p = mergeParameters(parseQuery("do=maintenance&do=popup&id=7"),
                                 R"({"do":"other","id":8,"name":"Ali","tags":[1,2],"none":null})");
        QCOMPARE(q(p.command), QStringLiteral("maintenance"));
        QCOMPARE(q(p.params["id"]), QStringLiteral("\"7\""));
        QCOMPARE(q(p.params["name"]), QStringLiteral("\"Ali\""));
        QCOMPARE(q(p.params["tags"]), QStringLiteral("[1,2]"));

        ApiCall call;
        call.params = p.params;
        QVERIFY(!call.has("none"));
        QVERIFY(!call.text("none"));
        QVERIFY(!call.text("missing"));
        QCOMPARE(q(*call.text("id")), QStringLiteral("7"));

        // Without "do" in the query the body names the command.
        QCOMPARE(q(mergeParameters({}, R"({"do":"popup"})").command), QStringLiteral("popup"));
        // A body that is no JSON object adds nothing.
        auto broken = mergeParameters(parseQuery("a=1"), "do=popup");
        QVERIFY(broken.command.empty());
        QCOMPARE(broken.params.size(), size_t(1));
        QVERIFY(mergeParameters({}, "[1,2]").params.empty());
        QVERIFY(mergeParameters({}, R"({"do":5})").command.empty());
    }

    void bearerToken_data() {
        QTest::addColumn<QString>("header");
        QTest::addColumn<bool>("hasHeader");
        QTest::addColumn<QString>("param");
        QTest::addColumn<QString>("token");

        QTest::newRow("header") << "Bearer abc" << true << ""
                                << "abc";
        QTest::newRow("header wins") << "Bearer abc" << true << "def"
                                     << "abc";
        QTest::newRow("(null) header, no param") << "Bearer (null)" << true << ""
                                                 << "";
        QTest::newRow("(null) header falls back to param") << "Bearer (null)" << true << "def"
                                                           << "def";
        QTest::newRow("empty header") << "Bearer " << true << "def"
                                      << "def";
        QTest::newRow("no header") << "" << false << "def"
                                   << "def";
        QTest::newRow("param with scheme") << "" << false << "Bearer def"
                                           << "def";
        QTest::newRow("param (null)") << "" << false << "(null)"
                                      << "";
        QTest::newRow("nothing") << "" << false << ""
                                 << "";
    }

    void bearerToken() {
        QFETCH(QString, header);
        QFETCH(bool, hasHeader);
        QFETCH(QString, param);
        QFETCH(QString, token);
        Json params = Json::object();
        if (!param.isEmpty()) params["bearer"] = param.toStdString();
        std::optional<std::string> authorization;
        if (hasHeader) authorization = header.toStdString();
        QCOMPARE(q(auth::bearerToken(authorization, params)), token);
    }

    void dispatchChecksTheTokenBeforeTheHandler() {
        int calls = 0;
        std::int64_t seenUser = -1;
        Dispatch dispatch([](const std::string& token) -> std::optional<std::int64_t> {
            if (token == "good") return 42;
            return std::nullopt;
        });
        dispatch.add("private", true, [&](const ApiCall& call) {
            ++calls;
            seenUser = call.userId;
            return envelope::success();
        });
        dispatch.add("public", false, [&](const ApiCall& call) {
            seenUser = call.userId;
            return envelope::success(nullptr);
        });
        dispatch.add("broken", false, [](const ApiCall&) -> Json { throw std::runtime_error("boom"); });
        QVERIFY_THROWS_EXCEPTION(std::logic_error, dispatch.add("public", false, {}));

        auto run = [&](const std::string& command, const std::string& token) {
            ApiCall call;
            call.command = command;
            call.token = token;
            call.userId = 99; // whatever the caller put there is not trusted
            return dispatch.handle(call);
        };

        const std::string expired =
            R"({"status":401,"message":"Oturumunuz sona erdi, lütfen tekrar giriş yapınız.","data":null})";
        QCOMPARE(q(run("private", "").dump()), q(expired));
        QCOMPARE(q(run("private", "bad").dump()), q(expired));
        QCOMPARE(calls, 0);

        QCOMPARE(run("private", "good")["status"].get<int>(), 200);
        QCOMPARE(calls, 1);
        QCOMPARE(seenUser, std::int64_t(42));

        run("public", "good");
        QCOMPARE(seenUser, std::int64_t(0));

        QCOMPARE(q(run("nothing", "good").dump()),
                 QStringLiteral(R"({"status":404,"message":"Bilinmeyen komut","data":null})"));
        QCOMPARE(run("", "").at("status").get<int>(), 404);
        QCOMPARE(run("broken", "").at("status").get<int>(), 500);
    }

    void envelopesKeepTheirShape() {
        QCOMPARE(q(envelope::success(Json{{"a", 1}}).dump()),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"a":1}})"));
        // The app shows the first error, so the order given must survive.
        const auto rejected =
            envelope::rejection("Hatalı giriş", {{"phone", "Telefon giriniz"}, {"fullname", "Ad giriniz"}});
        QCOMPARE(
            q(envelope::serialize(rejected)),
            QStringLiteral(
                R"({"status":400,"message":"Hatalı giriş","errors":{"phone":"Telefon giriniz","fullname":"Ad giriniz"},"data":null})"));
        // Malformed UTF-8 from a client is replaced instead of failing the reply.
        QVERIFY(!envelope::serialize(envelope::success(Json{{"x", std::string("a\xff")}})).empty());
    }
};

QTEST_GUILESS_MAIN(RequestParsingTest)
#include "RequestParsingTest.moc"
