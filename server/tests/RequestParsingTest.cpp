#include "core/ApiCall.h"
#include "core/Auth.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"
#include "core/Params.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

// How a request becomes a command: its parameters, its token, who may send it, what is read from it.
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
        QCOMPARE(q(items[3].first + "|" + items[3].second + "|" + items[4].second), QStringLiteral("flag||"));
        // A broken escape stays as it was.
        QCOMPARE(q(items[5].first + items[5].second), QStringLiteral("çü%zz"));
        QVERIFY(parseQuery("").empty());
        QCOMPARE(parseQuery("&&a=1&").size(), size_t(1));
    }

    void queryWinsOverBodyAndFirstValueCounts() {
        auto p = mergeParameters(parseQuery("do=maintenance&do=popup&id=7"),
                                 R"({"do":"other","id":8,"name":"Ali","tags":[1,2]})");
        QCOMPARE(q(p.command), QStringLiteral("maintenance"));
        QCOMPARE(q(p.params.dump()),
                 QStringLiteral(R"({"do":"maintenance","id":"7","name":"Ali","tags":[1,2]})"));
        // Without "do" in the query the body names the command; a body that is no JSON object adds nothing.
        QCOMPARE(q(mergeParameters({}, R"({"do":"popup"})").command), QStringLiteral("popup"));
        auto broken = mergeParameters(parseQuery("a=1"), "do=popup");
        QVERIFY(broken.command.empty());
        QCOMPARE(broken.params.size(), size_t(1));
        QVERIFY(mergeParameters({}, "[1,2]").params.empty());
        QVERIFY(mergeParameters({}, R"({"do":5})").command.empty());
    }

    void bearerToken_data() {
        QTest::addColumn<QString>("header"); // "-": not sent
        QTest::addColumn<QString>("param");
        QTest::addColumn<QString>("token");
        auto row = [](const char* name, const char* header, const char* param, const char* token) {
            QTest::newRow(name) << header << param << token;
        };
        row("header", "Bearer abc", "", "abc");
        row("header wins", "Bearer abc", "def", "abc");
        row("(null) header, no param", "Bearer (null)", "", "");
        row("(null) header falls back to param", "Bearer (null)", "def", "def");
        row("empty header", "Bearer ", "def", "def");
        row("no header", "-", "def", "def");
        row("param with scheme", "-", "Bearer def", "def");
        row("param (null)", "-", "(null)", "");
        row("nothing", "-", "", "");
    }

    void bearerToken() {
        QFETCH(QString, header);
        QFETCH(QString, param);
        QFETCH(QString, token);
        Json params = Json::object();
        if (!param.isEmpty()) params["bearer"] = param.toStdString();
        std::optional<std::string> authorization;
        if (header != "-") authorization = header.toStdString();
        QCOMPARE(q(auth::bearerToken(authorization, params)), token);
    }

    // Access is settled before a handler runs, and the handler learns who is calling.
    void dispatchDecidesAccess() {
        int calls = 0;
        ApiCall seen;
        Dispatch dispatch([](const std::string& token) -> std::optional<Caller> {
            if (token == "dealer") return Caller{42, "dealer"};
            if (token == "member") return Caller{7, "loyalty"};
            return std::nullopt;
        });
        auto record = [&](const ApiCall& call) {
            ++calls;
            seen = call;
            return envelope::success();
        };
        dispatch.add("shop", Access::Dealer, record);
        dispatch.add("farms", Access::FarmerSide, record);
        dispatch.add("bell", Access::Account, record);
        dispatch.add("open", Access::Public, record);
        dispatch.add("broken", Access::Public,
                     [](const ApiCall&) -> Json { throw std::runtime_error("boom"); });
        QVERIFY_THROWS_EXCEPTION(std::logic_error, dispatch.add("open", Access::Public, record));

        auto run = [&](const std::string& command, const std::string& token) {
            ApiCall call;
            call.command = command;
            call.token = token;
            call.userId = 99; // whatever the caller put there is not trusted
            call.role = "adminUser";
            return dispatch.handle(call).dump();
        };
        const QString forbidden =
            QStringLiteral(R"({"status":403,"message":"Bu işlem için yetkiniz bulunmuyor.","data":null})");
        QCOMPARE(q(run("shop", "")), q(testing::Expired));
        QCOMPARE(q(run("shop", "unknown")), q(testing::Expired));
        QCOMPARE(q(run("shop", "member")), forbidden);
        QCOMPARE(q(run("farms", "dealer")), forbidden);
        QCOMPARE(calls, 0);

        QVERIFY(run("shop", "dealer").find("\"status\":200") != std::string::npos);
        QCOMPARE(seen.userId, std::int64_t(42));
        QCOMPARE(q(seen.role), QStringLiteral("dealer"));
        run("bell", "member");
        QCOMPARE(q(seen.role), QStringLiteral("loyalty"));
        run("open", "dealer"); // a public command does not look at the token
        QCOMPARE(seen.userId, std::int64_t(0));
        QVERIFY(seen.role.empty());
        QCOMPARE(calls, 3);

        QVERIFY(run("nothing", "dealer").find("\"status\":404") != std::string::npos);
        QVERIFY(run("broken", "").find("\"status\":500") != std::string::npos);
    }

    // Malformed UTF-8 from a client is replaced instead of failing the reply.
    void replyWithMalformedText() {
        QVERIFY(!envelope::serialize(envelope::success(Json{{"x", std::string("a\xff")}})).empty());
    }

    // Each reading of a value as the app may send it: "-" is nullopt.
    void readerForms_data() {
        QTest::addColumn<QString>("value"); // JSON
        QTest::addColumn<QString>("integer");
        QTest::addColumn<QString>("point");
        QTest::addColumn<QString>("comma");
        QTest::addColumn<QString>("leading");
        QTest::addColumn<QString>("ids");
        auto row = [](const char* value, const char* integer, const char* point, const char* comma,
                      const char* leading, const char* ids) {
            QTest::newRow(value) << value << integer << point << comma << leading << ids;
        };
        row("42", "42", "42", "42", "42", "[42]");
        row("42.0", "42", "42", "42", "42", "[42]");
        row("2.5", "-", "2.5", "2.5", "2.5", "-");
        row(R"(" 42 ")", "42", "42", "42", "42", "[42]");
        row(R"("-3")", "-3", "-3", "-3", "-3", "[-3]");
        row(R"("12,5")", "-", "-", "12.5", "12", "[12,5]");
        row(R"("+1.")", "-", "1", "1", "1", "-");
        row(R"("3.7e1")", "-", "-", "-", "37", "-");
        row(R"("12a")", "-", "-", "-", "12", "-");
        row(R"("abc")", "-", "-", "-", "0", "-");
        row(R"("")", "-", "-", "-", "0", "[]");
        row("true", "-", "-", "-", "-", "-");
        row("null", "-", "-", "-", "-", "[]");
        row(R"("[54, 54, 52]")", "-", "-", "-", "0", "[54,52]");
        row("[51,\"52\",51]", "-", "-", "-", "-", "[51,52]");
        row("[51,\"x\"]", "-", "-", "-", "-", "-");
    }

    void readerForms() {
        QFETCH(QString, value);
        const Json params{{"v", Json::parse(value.toStdString())}};
        const Params p(params);
        auto shown = [](const auto& read) -> QString {
            if (!read) return QStringLiteral("-");
            if constexpr (std::is_same_v<std::decay_t<decltype(*read)>, std::vector<std::int64_t>>)
                return q(Json(*read));
            else
                return QString::number(*read);
        };
        QTEST(shown(p.integer("v")), "integer");
        QTEST(shown(p.number("v", NumberText::Point)), "point");
        QTEST(shown(p.number("v", NumberText::PointOrComma)), "comma");
        QTEST(shown(p.number("v", NumberText::Leading)), "leading");
        QTEST(shown(p.ids("v")), "ids");
    }

    // Problems come back under their fields in the order found, the first one as the message.
    void readerCollectsProblemsInOrder() {
        const Json params{{"name", "  "}, {"size", "x"}, {"sms", "evet"},
                          {"list", "[1"}, {"count", 3},  {"flag", true}};
        Params p(params);
        QCOMPARE(q(p.required("name", "Ad giriniz")), QString());
        QVERIFY(!p.requiredNumber("size", NumberText::PointOrComma, "Boyut giriniz", "Boyut okunamadı"));
        QVERIFY(!p.requiredInteger("missing", "Sayı giriniz", "Sayı okunamadı"));
        QCOMPARE(p.requiredAnswer("sms", "Seçiniz", "Seçim okunamadı"), Answer::Invalid);
        QCOMPARE(p.requiredAnswer("flag", "Seçiniz", "Seçim okunamadı"), Answer::Yes);
        QCOMPARE(p.requiredInteger("count", "Sayı giriniz", "Sayı okunamadı").value_or(0), std::int64_t(3));
        QVERIFY(!p.list("list"));
        QCOMPARE(q(*p.list("missing")), QStringLiteral("[]"));
        p.fail("count", "Çok fazla");
        QCOMPARE(
            q(envelope::serialize(p.rejection())),
            QStringLiteral(R"({"status":400,"message":"Ad giriniz","errors":{"name":"Ad giriniz",)"
                           R"("size":"Boyut okunamadı","missing":"Sayı giriniz","sms":"Seçim okunamadı",)"
                           R"("count":"Çok fazla"},"data":null})"));
        // Texts as the handlers compare them.
        QCOMPARE(q(*p.text("flag") + *p.text("count")), QStringLiteral("13"));
        const Json empty{{"id", ""}};
        QVERIFY(!p.filled("missing") && !Params(empty).filled("id"));
    }
};

QTEST_GUILESS_MAIN(RequestParsingTest)
#include "RequestParsingTest.moc"
