#include "accounts/Accounts.h"
#include "notifications/Notifications.h"

#include <QTest>

#include "TestSupport.h"

#include <map>
#include <set>

using namespace ekinora::server;
using namespace testing;

// Every command of the table under every kind of caller: no token, a forged one, one withdrawn by
// logout, and each role's, on its own records and on another account's of the same role. Commands
// added later are walked by themselves.
class AccessTest : public ServiceTest {
    Q_OBJECT

    // What the app sends before sign-in: these alone answer without a token.
    const std::set<std::string> open = {
        "region/cities", "region/counties", "produces", "produce/aps", "page/detail", "sms/get", "sms/check",
        "farmer/login", "farmer/logout", "farmer/register", "dealer/register", "dealer/check-information-field",
        "maintenance", "app/version", "weather/weather-json", "weather/weather-weekly"};
    const std::map<Access, std::set<std::string>> rolesOf = {
        {Access::Account, {"farmer", "loyalty", "dealer", "adminUser"}},
        {Access::FarmerSide, {"farmer", "loyalty"}},
        {Access::Dealer, {"dealer"}},
        {Access::Staff, {"adminUser"}}};
    const std::vector<std::string> roles = {"farmer", "loyalty", "dealer", "adminUser"};

    std::int64_t demoUser(const std::string& role) {
        return s->db->scalar("SELECT id FROM users WHERE phone = ?", {accounts::demoAccount(role).phone});
    }
    Reply call(const std::string& command, const std::string& token, const Json& params = Json::object()) {
        return s->post(command, params, token.empty() ? httplib::Headers{} : testing::Service::bearer(token));
    }

    // Everything stored of an account: its row and the rows of every table that names it.
    Json holdings(std::int64_t user) {
        Json all = Json::object();
        all["users"] = s->db->query("SELECT * FROM users WHERE id = ?", {user});
        for (const auto& table : s->db->query("SELECT name FROM sqlite_master WHERE type = 'table'")) {
            const std::string name = table["name"];
            for (const auto& column : s->db->query("SELECT name FROM pragma_table_info(?)", {name}))
                if (column["name"] == "user_id" || column["name"] == "sender_user_id")
                    all[name + "." + column["name"].get<std::string>()] = s->db->query(
                        "SELECT * FROM " + name + " WHERE " + column["name"].get<std::string>() + " = ?", {user});
        }
        all["messages"] = s->db->query(
            "SELECT m.* FROM messages m JOIN subjects s ON s.id = m.subject_id WHERE s.user_id = ?", {user});
        all["farm_aps"] =
            s->db->query("SELECT a.* FROM farm_aps a JOIN farms f ON f.id = a.farm_id WHERE f.user_id = ?", {user});
        return all;
    }

private slots:

    void everyCommandAnswersOnlyItsRoles() {
        const auto commands = s->server->commands();
        const QString forbidden =
            QStringLiteral(R"({"status":403,"message":"Bu işlem için yetkiniz bulunmuyor.","data":null})");
        // A token is never renewed and never runs out: years later it still holds.
        s->now->store(ekinora::server::systemSeconds() + 10 * 365 * 86400);
        const std::string forged(64, 'a');
        int calls = 0;
        for (const auto& [command, access] : commands) {
            const bool isOpen = open.count(command) > 0;
            QVERIFY2((access == Access::Public) == isOpen, command.c_str());
            if (command.rfind("admin/", 0) == 0) QVERIFY2(access == Access::Staff, command.c_str());

            // A token of its own for each call: a command may withdraw the one it gets.
            std::map<std::string, std::string> tokens = {{"nobody", ""}, {"forged", forged}};
            tokens["withdrawn"] = accounts::issueToken(*s->db, demoUser("farmer"));
            QCOMPARE(call("farmer/logout", tokens["withdrawn"]).status(), 200);
            for (const auto& role : roles)
                tokens[role] = accounts::issueToken(*s->db, demoUser(role));

            for (const auto& [who, token] : tokens) {
                const bool signedIn = std::find(roles.begin(), roles.end(), who) != roles.end();
                // The token once as the header, once as the "bearer" parameter, as screens send it.
                const auto reply = who == "withdrawn" ? s->get("/api/?do=" + command + "&bearer=" + token)
                                                      : call(command, token);
                const std::string what = command + " as " + who;
                ++calls;
                if (isOpen || (signedIn && rolesOf.at(access).count(who)))
                    QVERIFY2(reply.status() != 0 && reply.status() != 401 && reply.status() != 403, what.c_str());
                else
                    QVERIFY2(q(reply.body) == (signedIn ? forbidden : q(testing::Expired)), what.c_str());
            }
        }
        qInfo("%zu commands (%zu open), %d calls", commands.size(), open.size(), calls);
    }

    // Each role against a second account of its own kind holding records of every area it reaches:
    // every command it may send, with the other's ids in every id parameter, leaves the other's rows
    // as they were and shows nothing of them.
    void noAccountReachesAnothersRecords() {
        struct Victim {
            std::int64_t id;
            std::string token, phone;
            std::vector<std::int64_t> ids;
        };
        std::map<std::string, Victim> victims;
        const std::string marker = "Gizli";
        const Json place = *s->db->queryRow("SELECT city_id, id FROM counties LIMIT 1");
        for (const auto& role : roles) {
            const std::string phone = "0500999000" + std::to_string(victims.size());
            s->db->execute("INSERT INTO users (phone, fullname, email, type, city_id, county_id, menu, dealer_name)"
                           " VALUES (?, ?, ?, ?, ?, ?, '[0]', ?)",
                           {phone, marker + " Kişi", "gizli@ornek.com.tr", role, place["city_id"].get<std::int64_t>(),
                            place["id"].get<std::int64_t>(),
                            role == "dealer" ? SqlValue(marker + " Bayi") : SqlValue(nullptr)});
            Victim v{s->db->lastInsertId(), "", phone, {}};
            v.token = accounts::issueToken(*s->db, v.id);
            notifications::notify(*s->db, v.id, marker + " bildirim");
            if (rolesOf.at(Access::FarmerSide).count(role)) {
                QCOMPARE(call("produce/set", v.token, {{"produceId", 1}, {"range", 10}}).status(), 200);
                const auto subject = call("subject/add", v.token, {{"title", marker + " soru"}, {"description", marker}});
                QCOMPARE(subject.status(), 200);
                QCOMPARE(call("subject/message/send", v.token,
                              {{"subjectId", subject.json["data"]["subject"]["id"]}, {"text", marker + " mesaj"}})
                             .status(),
                         200);
            }
            for (const char* sql : {"SELECT id FROM farms WHERE user_id = ?", "SELECT id FROM subjects WHERE user_id = ?",
                                    "SELECT id FROM notifications WHERE user_id = ?",
                                    "SELECT id FROM messages WHERE sender_user_id = ?", "SELECT id FROM users WHERE id = ?"})
                for (const auto& row : s->db->query(sql, {v.id}))
                    v.ids.push_back(row["id"].get<std::int64_t>());
            victims[role] = v;
        }

        int calls = 0;
        for (const auto& role : roles) {
            const Victim& victim = victims[role];
            const Json before = holdings(victim.id);
            for (const auto& [command, access] : s->server->commands()) {
                if (access == Access::Public || !rolesOf.at(access).count(role)) continue;
                for (const auto id : victim.ids) {
                    const Json params = {{"id", id}, {"subjectId", id}, {"farmId", id}, {"userId", id},
                                         {"produceId", 1},     {"range", 20},        {"periodId", 1},
                                         {"status", "1"},      {"title", "Başka"},   {"text", "Başka"},
                                         {"phone", victim.phone}, {"hash", "x"}};
                    const auto reply = call(command, accounts::issueToken(*s->db, demoUser(role)), params);
                    ++calls;
                    const std::string what = command + " as " + role + " on " + std::to_string(id);
                    QVERIFY2(reply.status() != 0 && reply.status() != 500, what.c_str());
                    QVERIFY2(reply.body.find(marker) == std::string::npos &&
                                 reply.body.find(victim.phone) == std::string::npos,
                             what.c_str());
                    QVERIFY2(holdings(victim.id) == before, what.c_str());
                }
            }
        }
        qInfo("%d calls on another account's records", calls);
    }

    // Demo mode alone lets the fixed tokens in and puts the SMS code in the reply; a database a
    // demo made does not keep them once the service runs without it.
    void demoConveniencesOnlyInDemoMode() {
        const std::string farmer = testing::tokenOf("farmer");
        QCOMPARE(call("farmer/produces", farmer).status(), 200);
        QVERIFY(s->get("/api/?do=sms/get&phoneNumber=05321000101").json["data"].contains("code"));
        s->client.reset();
        s->server.reset();

        ServerOptions real;
        real.dbPath = s->dir.filePath("service.db").toStdString();
        Server server(real);
        httplib::Client client("127.0.0.1", server.start());
        QCOMPARE(q(Reply::from(client.Get("/api/?do=farmer/produces", testing::Service::bearer(farmer))).body),
                 q(testing::Expired));
        const Json data = Reply::from(client.Get("/api/?do=sms/get&phoneNumber=05321000101")).json["data"];
        QVERIFY((testing::keys(data) == std::vector<std::string>{"hash", "nextAction"}));
        QVERIFY(server.demoAccountsText().find(farmer) == std::string::npos);
        // A token a sign-in issued is no demo help: it stays.
        const std::string issued = accounts::issueToken(*s->db, demoUser("farmer"));
        QCOMPARE(Reply::from(client.Get("/api/?do=farmer/produces", testing::Service::bearer(issued))).status(), 200);
    }
};

QTEST_GUILESS_MAIN(AccessTest)
#include "AccessTest.moc"
