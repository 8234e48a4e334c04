#include "accounts/Accounts.h"
#include "core/Limits.h"

#include <QTest>

#include "TestSupport.h"

#include <map>
#include <set>

using namespace ekinora::server;
using namespace testing;

// Bad input to every command of the table, class by class: bodies over the command's limit,
// malformed JSON, invalid UTF-8, over-long texts, numbers out of range. Each is refused in the
// envelope, or at least never fails the service, and a refused request writes nothing.
class BadInputTest : public ServiceTest {
    Q_OBJECT

    int tried = 0;

    // A fresh token of a role the command lets in; none for an open command.
    std::string tokenFor(Access access) {
        const char* role = access == Access::Dealer ? "dealer" : access == Access::Staff ? "adminUser" : "farmer";
        if (access == Access::Public) return {};
        return accounts::issueToken(
            *s->db, s->db->scalar("SELECT id FROM users WHERE phone = ?", {accounts::demoAccount(role).phone}));
    }
    Reply send(const std::string& target, const std::string& body, const std::string& token) {
        ++tried;
        httplib::Headers headers;
        if (!token.empty()) headers = testing::Service::bearer(token);
        return Reply::from(s->client->Post(target.c_str(), headers, body, "application/json; charset=UTF-8"));
    }
    // Another connection sees whether anything was committed since it last looked.
    std::int64_t version() { return s->db->scalar("PRAGMA data_version"); }

private slots:
    void init() {
        ServiceTest::init();
        s->client->set_url_encode(false);
    }

    void refusedInputWritesNothing() {
        const std::string unreadable = R"({"status":400,"message":"Gönderilen bilgi okunamadı, lütfen tekrar deneyiniz.",)"
                                       R"("errors":{"body":"Gönderilen bilgi okunamadı, lütfen tekrar deneyiniz."},"data":null})";
        const std::string longText(limits::MaxTextLength + 1, 'a');
        for (const auto& [command, access] : s->server->commands()) {
            const std::string target = "/api/?do=" + command;
            const std::string token = tokenFor(access);
            struct Case {
                const char* what;
                std::string target, body;
                std::string field, message;
            };
            const std::vector<Case> cases = {
                {"malformed JSON", target, R"({"title":"Buğday",)", "body", envelope::UnreadableBody},
                {"not an object", target, R"(["Buğday"])", "body", envelope::UnreadableBody},
                {"invalid UTF-8 in the body", target, "{\"title\":\"Bu\xc4\"}", "body", envelope::UnreadableBody},
                {"invalid UTF-8 in the query", target + "&title=Bu%C4%9F%FFday", "", "title", limits::InvalidText},
                {"overlong UTF-8 form", target + "&title=%C0%AF", "", "title", limits::InvalidText},
                {"over-long text", target, Json{{"title", longText}}.dump(), "title", limits::TextTooLong},
                {"over-long text in a list", target, Json{{"aps", Json::array({1, longText})}}.dump(), "aps",
                 limits::TextTooLong},
            };
            for (const auto& c : cases) {
                const auto before = version();
                const auto reply = send(c.target, c.body, token);
                const std::string what = command + ": " + c.what;
                QVERIFY2(reply.http == 200 && reply.status() == 400, what.c_str());
                if (c.field == "body")
                    QVERIFY2(reply.body == unreadable, what.c_str());
                else
                    QVERIFY2(reply.json["errors"][c.field] == c.message, (what + " " + reply.body).c_str());
                QVERIFY2(version() == before, what.c_str());
            }
        }
    }

    // Numbers the app never sends: the command answers with an envelope, never fails, and writes
    // nothing unless it accepted them.
    void numbersOutOfRange() {
        const std::vector<std::string> names = {"id",     "subjectId", "produceId", "produce", "range",
                                                "cityId", "countyId",  "periodId",  "limit",   "ptoken",
                                                "status", "question_id", "category", "catalog", "type"};
        const std::vector<Json> values = {"-1", "99999999999999999999", "1e308", 1e308, -1e308,
                                          INT64_MIN, "-0", "0x10", "١٢"};
        for (const auto& [command, access] : s->server->commands()) {
            for (const auto& value : values) {
                Json params = Json::object();
                for (const auto& name : names)
                    params[name] = value;
                const auto before = version();
                const auto reply = send("/api/?do=" + command, params.dump(), tokenFor(access));
                const std::string what = command + " with " + value.dump() + ": " + reply.body.substr(0, 200);
                QVERIFY2(reply.http == 200 && reply.json.is_object(), what.c_str());
                QVERIFY2(reply.status() != 0 && reply.status() != 500, what.c_str());
                if (reply.status() != 200) QVERIFY2(version() == before, what.c_str());
            }
        }
    }

    // Each command takes a body up to its limit; one byte more is refused before it reaches the
    // command, and the service goes on.
    void bodiesOverTheCommandsLimit() {
        for (const auto& [command, access] : s->server->commands()) {
            const size_t limit = s->server->bodyLimit(command);
            QVERIFY2(limit <= 1024 * 1024, command.c_str());
            const std::string over = Json{{"pad", std::string(limit, 'x')}}.dump();
            const auto before = version();
            const auto reply = send("/api/?do=" + command, over, tokenFor(access));
            QVERIFY2(reply.status() == 413 && reply.json["message"].get<std::string>().find("en fazla") != std::string::npos,
                     command.c_str());
            QVERIFY2(version() == before, command.c_str());
        }
        // The command named inside the body only: its limit still holds.
        QCOMPARE(send("/api/", Json{{"do", "maintenance"}, {"pad", std::string(s->server->bodyLimit("maintenance"), 'x')}}.dump(), "")
                     .status(),
                 413);
        Json many = Json::object();
        while (many.dump().size() + 4000 < s->server->bodyLimit("maintenance"))
            many["p" + std::to_string(many.size())] = std::string(3900, 'x');
        const std::string fits = many.dump();
        QCOMPARE(send("/api/?do=maintenance", fits, "").status(), 200);
    }

    // 50 MB to a plain command, announced and in chunks: refused without the service reading it all.
    void hugeBodiesAreNotReadWhole() {
        const size_t huge = 50 * 1024 * 1024;
        const std::string block(64 * 1024, ' ');
        for (const bool chunked : {false, true}) {
            size_t sent = 0;
            auto provider = [&](size_t, httplib::DataSink& sink) {
                if (sent >= huge) {
                    if (chunked) sink.done();
                    return true;
                }
                sent += block.size();
                return sink.write(block.data(), block.size());
            };
            httplib::Result result =
                chunked ? s->client->Post("/api/?do=maintenance", provider, "application/json")
                        : s->client->Post("/api/?do=maintenance", huge,
                                          [&](size_t offset, size_t, httplib::DataSink& sink) {
                                              sent = offset + block.size();
                                              return offset < huge && sink.write(block.data(), block.size());
                                          },
                                          "application/json");
            const auto reply = Reply::from(result);
            // The refusal arrives when the client reads before it has sent everything; either way the
            // service stopped reading long before the end.
            QVERIFY2(!result || reply.status() == 413, reply.body.c_str());
            QVERIFY2(sent < huge / 2, std::to_string(sent).c_str());
            QCOMPARE(s->get("/api/?do=maintenance").status(), 200);
        }
        qInfo("%d bad inputs tried", tried);
    }
};

QTEST_GUILESS_MAIN(BadInputTest)
#include "BadInputTest.moc"
