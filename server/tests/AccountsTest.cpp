#include "accounts/DemoAccounts.h"
#include "accounts/Login.h"
#include "accounts/SmsChallenges.h"
#include "conversations/Unread.h"
#include "core/Database.h"
#include "core/Migrations.h"
#include "core/Server.h"
#include "regions/Regions.h"

#include <QTest>

#include "TestSupport.h"

#include <atomic>
#include <memory>
#include <thread>

using namespace ekinora::server;
using testing::Json;
using testing::q;
using testing::Reply;

namespace {

const std::string Expired =
    R"({"status":401,"message":"Oturumunuz sona erdi, lütfen tekrar giriş yapınız.","data":null})";
const std::string CodeNotFound =
    R"({"status":400,"message":"Kod bulunamadı","errors":{"code":"Kod bulunamadı"},"data":null})";
const std::string CodeWrong = R"({"status":400,"message":"Lütfen kodu doğru giriniz",)"
                              R"("errors":{"code":"Lütfen kodu doğru giriniz"},"data":{"action":null}})";
const std::string CodeExpired = R"({"status":400,"message":"Kodun süresi doldu, lütfen yeni kod isteyiniz.",)"
                                R"("errors":{"code":"Kodun süresi doldu, lütfen yeni kod isteyiniz."},)"
                                R"("data":null})";
const std::string UnknownPhone = "05559998877";

std::vector<std::string> keys(const Json& object) {
    std::vector<std::string> out;
    for (auto it = object.begin(); it != object.end(); ++it)
        out.push_back(it.key());
    return out;
}

std::string wrongCodeFor(const std::string& code) {
    return code == "111111" ? "222222" : "111111";
}

} // namespace

class AccountsTest : public QObject {
    Q_OBJECT

    std::shared_ptr<std::atomic<std::int64_t>> m_now;
    std::unique_ptr<Server> m_server;
    std::unique_ptr<httplib::Client> m_client;

    Reply get(const std::string& target, const httplib::Headers& headers = {}) {
        return Reply::from(m_client->Get(target.c_str(), headers));
    }
    static httplib::Headers bearer(const std::string& token) {
        return {{"Authorization", "Bearer " + token}};
    }

    struct Code {
        std::string hash, code, nextAction;
    };
    Code requestCode(const std::string& phone, const std::string& extra = {}) {
        const auto reply = get("/api/?do=sms/get&phoneNumber=" + phone + extra);
        if (reply.json["status"] != 200) return {};
        const Json& data = reply.json["data"];
        return {data["hash"].get<std::string>(), data["code"].get<std::string>(),
                data["nextAction"].get<std::string>()};
    }
    Reply login(const std::string& hash, const std::string& code, const std::string& extra = {}) {
        return get("/api/?do=farmer/login&type=login&deviceType=2&hash=" + hash + "&code=" + code + extra);
    }
    Reply check(const std::string& hash, const std::string& code) {
        return get("/api/?do=sms/check&type=register&hash=" + hash + "&code=" + code);
    }

private slots:
    void init() {
        m_now = std::make_shared<std::atomic<std::int64_t>>(1'700'000'000);
        ServerOptions options;
        options.clock = [now = m_now] { return now->load(); };
        m_server = std::make_unique<Server>(options);
        m_client = std::make_unique<httplib::Client>("127.0.0.1", m_server->start());
    }

    void cleanup() {
        m_client.reset();
        m_server.reset();
    }

    void loginJourney() {
        const auto& farmer = accounts::demoAccount("farmer");
        // Blanks as a user may type them; the number is kept without.
        const auto code = requestCode("0532%20100%200101");
        QCOMPARE(q(code.nextAction), QStringLiteral("login"));
        QCOMPARE(int(code.hash.size()), 32);
        QCOMPARE(int(code.code.size()), 6);
        QVERIFY(code.code.find_first_not_of("0123456789") == std::string::npos);

        QCOMPARE(q(login(code.hash, wrongCodeFor(code.code)).body), q(CodeWrong));

        const auto reply = login(code.hash, code.code, "&deviceId=" + std::string(64, 'a'));
        QCOMPARE(reply.json["status"].get<int>(), 200);
        const Json& user = reply.json["data"];
        QVERIFY((keys(user) == std::vector<std::string>{"id", "fullname", "email", "phone", "type", "menu",
                                                        "token", "location"}));
        QCOMPARE(q(user["phone"].get<std::string>()), q(farmer.phone));
        QCOMPARE(q(user["type"].get<std::string>()), QStringLiteral("farmer"));
        QVERIFY(user["menu"].is_array() && !user["menu"].empty());
        QCOMPARE(q(user["location"]["city"]["name"].get<std::string>()), q(farmer.city));
        QCOMPARE(q(user["location"]["county"]["name"].get<std::string>()), q(farmer.county));
        QVERIFY(user["location"]["county"]["latitude"].is_number());
        QCOMPARE(q(user["location"]["region"]["fullname"].get<std::string>()), q(farmer.regionFullname));
        QCOMPARE(q(user["location"]["region"]["phonenumber"].get<std::string>()),
                 q(farmer.regionPhonenumber));

        // A new token, not the demo one, and it opens authorised commands.
        const auto token = user["token"].get<std::string>();
        QCOMPARE(int(token.size()), 64);
        QVERIFY(token != farmer.token);
        QCOMPARE(get("/api/?do=popup", bearer(token)).json["status"].get<int>(), 200);
        QCOMPARE(q(get("/api/?do=subject/message/check", bearer(token)).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"count":0}})"));

        // The code logs in once.
        QCOMPARE(q(login(code.hash, code.code).body), q(CodeNotFound));

        // Logout withdraws that token only; the account's other sessions stay.
        QCOMPARE(q(get("/api/?do=farmer/logout", bearer(token)).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":null})"));
        QCOMPARE(q(get("/api/?do=popup", bearer(token)).body), q(Expired));
        QCOMPARE(q(get("/api/?do=subject/message/check&bearer=" + token).body), q(Expired));
        QCOMPARE(get("/api/?do=popup", bearer(farmer.token)).json["status"].get<int>(), 200);
    }

    void logoutAsTheAppSendsIt() {
        // The app clears its token first: "(null)" in the header, no "bearer".
        for (const httplib::Headers& headers :
             {httplib::Headers{{"Authorization", "Bearer (null)"}}, httplib::Headers{}, bearer("unknown")}) {
            const auto reply = get("/api/?do=farmer/logout", headers);
            QCOMPARE(reply.json["status"].get<int>(), 200);
            QVERIFY(reply.json["data"].is_null());
        }
        QCOMPARE(
            get("/api/?do=popup", bearer(accounts::demoAccount("farmer").token)).json["status"].get<int>(),
            200);
    }

    void codeChecks() {
        QCOMPARE(q(check("0123456789abcdef0123456789abcdef", "123456").body), q(CodeNotFound));
        QCOMPARE(q(get("/api/?do=sms/check&code=123456").body), q(CodeNotFound));
        QCOMPARE(q(login("nope", "123456").body), q(CodeNotFound));

        const auto code = requestCode(UnknownPhone, "&type=register");
        QCOMPARE(q(code.nextAction), QStringLiteral("register"));
        QCOMPARE(q(check(code.hash, wrongCodeFor(code.code)).body), q(CodeWrong));
        QCOMPARE(q(check(code.hash, "").body), q(CodeWrong));
        QCOMPARE(q(check(code.hash, code.code).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"verified":true}})"));
        // Checking again does not spend it: registration comes after.
        QCOMPARE(check(code.hash, code.code).json["status"].get<int>(), 200);

        // A newer code for the phone retires the older one.
        const auto newer = requestCode(UnknownPhone);
        QVERIFY(newer.hash != code.hash);
        QCOMPARE(q(check(code.hash, code.code).body), q(CodeNotFound));
        QCOMPARE(check(newer.hash, newer.code).json["status"].get<int>(), 200);
    }

    void codesExpireAfterFiveMinutes() {
        const auto code = requestCode(accounts::demoAccount("loyalty").phone);
        *m_now += 299;
        QCOMPARE(check(code.hash, code.code).json["status"].get<int>(), 200);
        *m_now += 1;
        QCOMPARE(q(check(code.hash, code.code).body), q(CodeExpired));
        QCOMPARE(q(login(code.hash, code.code).body), q(CodeExpired));

        // A fresh code works again.
        const auto fresh = requestCode(accounts::demoAccount("loyalty").phone);
        QCOMPARE(login(fresh.hash, fresh.code).json["status"].get<int>(), 200);
    }

    void wrongCodesRunOut() {
        const auto code = requestCode(accounts::demoAccount("dealer").phone);
        for (int attempt = 1; attempt <= accounts::sms::MaxWrongAttempts; ++attempt)
            QCOMPARE(q(login(code.hash, wrongCodeFor(code.code)).body), q(CodeWrong));
        // Then even the right code is refused, through both commands.
        QCOMPARE(q(login(code.hash, code.code).body), q(CodeExpired));
        QCOMPARE(q(check(code.hash, code.code).body), q(CodeExpired));
    }

    void loginsRacingOnOneCode() {
        const auto code = requestCode(accounts::demoAccount("adminUser").phone);
        std::atomic<int> granted{0}, refused{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i)
            threads.emplace_back([&, port = m_server->port()] {
                httplib::Client client("127.0.0.1", port);
                auto result = client.Get("/api/?do=farmer/login&hash=" + code.hash + "&code=" + code.code);
                const auto reply = Reply::from(result);
                (reply.json["status"] == 200 ? granted : refused)++;
            });
        for (auto& t : threads)
            t.join();
        QCOMPARE(granted.load(), 1);
        QCOMPARE(refused.load(), 7);
    }

    void accountStatesAtLogin() {
        // An inactive dealer is known, and its right code ends in the activation notice.
        const auto& inactive = accounts::demoAccount("dealer", false);
        auto code = requestCode(inactive.phone);
        QCOMPARE(q(code.nextAction), QStringLiteral("login"));
        QCOMPARE(q(login(code.hash, code.code).body),
                 QStringLiteral(R"({"status":400,"message":"Hesabınız henüz aktif edilmedi.",)"
                                R"("errors":{"account":"Hesabınız henüz aktif edilmedi."},)"
                                R"("data":{"action":"notActiveDealer"}})"));

        // A number without an account is sent to registration; its code stays good for that.
        code = requestCode(UnknownPhone);
        QCOMPARE(q(code.nextAction), QStringLiteral("register"));
        QCOMPARE(q(login(code.hash, code.code).body),
                 QStringLiteral(R"({"status":400,"message":"Bu numara ile kayıtlı bir hesap bulunamadı.",)"
                                R"("errors":{"phoneNumber":"Bu numara ile kayıtlı bir hesap bulunamadı."},)"
                                R"("data":{"action":"register"}})"));
        QCOMPARE(check(code.hash, code.code).json["status"].get<int>(), 200);
    }

    void malformedPhones_data() {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("error");
        const QString invalid = QStringLiteral("Lütfen geçerli bir cep telefonu numarası giriniz.");
        const QString missing = QStringLiteral("Lütfen cep telefonu numaranızı giriniz.");
        QTest::newRow("absent") << "" << missing;
        QTest::newRow("empty") << "&phoneNumber=" << missing;
        QTest::newRow("blanks") << "&phoneNumber=%20%20" << missing;
        QTest::newRow("10 digits") << "&phoneNumber=5321000101" << invalid;
        QTest::newRow("12 digits") << "&phoneNumber=053210001011" << invalid;
        QTest::newRow("landline") << "&phoneNumber=02121000101" << invalid;
        QTest::newRow("dashes") << "&phoneNumber=0532-100-0101" << invalid;
        QTest::newRow("country code") << "&phoneNumber=%2B905321000101" << invalid;
        QTest::newRow("letter") << "&phoneNumber=0532100010a" << invalid;
    }

    void malformedPhones() {
        QFETCH(QString, query);
        QFETCH(QString, error);
        const auto reply = get("/api/?do=sms/get" + query.toStdString());
        QCOMPARE(reply.json["status"].get<int>(), 400);
        QVERIFY(reply.json["data"].is_null());
        QCOMPARE(q(reply.json["errors"].dump()), q(Json{{"phoneNumber", error.toStdString()}}.dump()));
    }

    void popupForOneAccount() {
        const auto& farmer = accounts::demoAccount("farmer");
        const auto& member = accounts::demoAccount("loyalty");
        m_server->setPopupActive(false);
        QVERIFY(m_server->setPopupActiveFor(farmer.phone, true));
        QVERIFY(!m_server->setPopupActiveFor(UnknownPhone, true));

        auto popupOf = [&](const std::string& token) {
            return get("/api/?do=popup", bearer(token)).json["data"]["popup"];
        };
        QCOMPARE(q(popupOf(farmer.token)["header"].get<std::string>()),
                 QStringLiteral("Bahar Kampanyası Başladı!"));
        QVERIFY(popupOf(member.token).is_null());

        // Both switches on: shown once, to everybody; the farmer's off leaves the global one.
        m_server->setPopupActive(true);
        QVERIFY(popupOf(member.token).is_object());
        m_server->setPopupActiveFor(farmer.phone, false);
        QVERIFY(popupOf(farmer.token).is_object());
        m_server->setPopupActive(false);
        QVERIFY(popupOf(farmer.token).is_null());

        // The demo control takes a phone too.
        httplib::Client demo("127.0.0.1", m_server->port());
        auto reply = Reply::from(demo.Post("/_demo/popup", Json{{"on", true}, {"phone", member.phone}}.dump(),
                                           "application/json"));
        QVERIFY(reply.json["data"]["popup"].is_object());
        QVERIFY(popupOf(member.token).is_object());
        QVERIFY(popupOf(farmer.token).is_null());
        reply = Reply::from(demo.Post("/_demo/popup", Json{{"on", true}, {"phone", UnknownPhone}}.dump(),
                                      "application/json"));
        QCOMPARE(reply.http, 400);
    }

    // Below the HTTP layer: what the replies do not show.
    void storedSideOfTheLogin() {
        auto db = std::make_unique<Database>(":memory:");
        db->migrate(migrations());
        regions::seed(*db, EKINORA_SERVER_DATA_DIR);
        accounts::seedDemoAccounts(*db);

        std::int64_t now = 1'000;
        std::vector<std::pair<std::string, std::string>> sent;
        Dispatch dispatch([&](const std::string&) { return std::optional<std::int64_t>(); });
        accounts::registerLoginCommands(
            dispatch, *db,
            {[&] { return now; },
             [&](const std::string& phone, const std::string& code) { sent.emplace_back(phone, code); }});
        auto call = [&](const std::string& command, Json params) {
            ApiCall c;
            c.command = command;
            c.params = std::move(params);
            return dispatch.handle(c);
        };

        // The SMS goes to the normalised number with the code of the reply.
        const auto& farmer = accounts::demoAccount("farmer");
        auto issued = call("sms/get", {{"phoneNumber", " " + farmer.phone + " "}})["data"];
        QCOMPARE(sent.size(), size_t(1));
        QCOMPARE(q(sent[0].first), q(farmer.phone));
        QCOMPARE(q(sent[0].second), q(issued["code"].get<std::string>()));
        QCOMPARE(q(db->queryRow("SELECT purpose FROM sms_challenges")->at("purpose").get<std::string>()),
                 QStringLiteral("login"));

        // A code sent as a JSON number matches too.
        const auto reply = call("farmer/login", {{"hash", issued["hash"]},
                                                 {"code", std::stoi(issued["code"].get<std::string>())},
                                                 {"deviceId", "abc123"},
                                                 {"deviceType", 2}});
        QCOMPARE(reply["status"].get<int>(), 200);
        auto device =
            db->queryRow("SELECT device_id, device_type FROM users WHERE phone = ?", {farmer.phone});
        QCOMPARE(q(device->at("device_id").get<std::string>()), QStringLiteral("abc123"));
        QCOMPARE(q(device->at("device_type").get<std::string>()), QStringLiteral("2"));

        // A registration finds the phone of a verified code for half an hour, and only until used.
        issued = call("sms/get", {{"phoneNumber", UnknownPhone}, {"type", "register"}})["data"];
        const auto hash = issued["hash"].get<std::string>();
        QCOMPARE(q(db->queryRow("SELECT purpose FROM sms_challenges WHERE hash = ?", {hash})
                       ->at("purpose")
                       .get<std::string>()),
                 QStringLiteral("register"));
        QVERIFY(!accounts::sms::verifiedPhone(*db, hash, now));
        QCOMPARE(call("sms/check", {{"hash", hash}, {"code", issued["code"]}})["status"].get<int>(), 200);
        now += accounts::sms::RegistrationWindowSeconds - 1;
        QCOMPARE(q(accounts::sms::verifiedPhone(*db, hash, now).value_or("")), q(UnknownPhone));
        QVERIFY(accounts::sms::consume(*db, hash));
        QVERIFY(!accounts::sms::consume(*db, hash));
        QVERIFY(!accounts::sms::verifiedPhone(*db, hash, now));
        now += 2;
        QCOMPARE(call("sms/check", {{"hash", hash}, {"code", issued["code"]}})["status"].get<int>(), 400);

        // Old challenges are cleared away by later requests.
        now += 2 * 24 * 60 * 60;
        call("sms/get", {{"phoneNumber", farmer.phone}});
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM sms_challenges"), std::int64_t(1));
    }

    void unreadAnswersPerSide() {
        Database db(":memory:");
        db.migrate(migrations());
        regions::seed(db, EKINORA_SERVER_DATA_DIR);
        accounts::seedDemoAccounts(db);
        auto idOf = [&](const char* type) {
            return db.scalar("SELECT id FROM users WHERE phone = ?", {accounts::demoAccount(type).phone});
        };
        const auto farmer = idOf("farmer"), member = idOf("loyalty"), staff = idOf("adminUser");

        QCOMPARE(conversations::unreadCount(db, farmer), std::int64_t(0));
        db.execute("INSERT INTO subjects (id, user_id, title) VALUES (1, ?, 'Buğdayda pas')", {farmer});
        db.execute("INSERT INTO subjects (id, user_id, title) VALUES (2, ?, 'Bağda külleme')", {member});
        auto message = [&](std::int64_t subject, std::int64_t sender, int read) {
            db.execute(
                "INSERT INTO messages (subject_id, sender_user_id, text, read) VALUES (?, ?, 'metin', ?)",
                {subject, sender, std::int64_t(read)});
        };
        message(1, farmer, 0); // the farmer's own question: not an answer for him
        message(1, staff, 0);  // an answer
        message(1, staff, 1);  // read already
        message(2, staff, 0);  // somebody else's subject
        message(2, member, 0);

        QCOMPARE(conversations::unreadCount(db, farmer), std::int64_t(1));
        QCOMPARE(conversations::unreadCount(db, member), std::int64_t(1));
        // The answering side waits for the askers' messages in every subject.
        QCOMPARE(conversations::unreadCount(db, staff), std::int64_t(2));
        QCOMPARE(conversations::unreadCount(db, 9999), std::int64_t(0));
    }
};

QTEST_GUILESS_MAIN(AccountsTest)
#include "AccountsTest.moc"
