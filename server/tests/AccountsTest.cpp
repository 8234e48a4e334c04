#include "accounts/Login.h"
#include "accounts/SmsChallenges.h"
#include "conversations/Unread.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"
#include "core/Migrations.h"
#include "regions/Regions.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

const std::string CodeNotFound =
    R"({"status":400,"message":"Kod bulunamadı","errors":{"code":"Kod bulunamadı"},"data":null})";
const std::string CodeWrong = R"({"status":400,"message":"Lütfen kodu doğru giriniz",)"
                              R"("errors":{"code":"Lütfen kodu doğru giriniz"},"data":{"action":null}})";
const std::string CodeExpired = R"({"status":400,"message":"Kodun süresi doldu, lütfen yeni kod isteyiniz.",)"
                                R"("errors":{"code":"Kodun süresi doldu, lütfen yeni kod isteyiniz."},)"
                                R"("data":null})";
const std::string UnknownPhone = "05559998877";

std::string wrongCodeFor(const std::string& code) {
    return code == "111111" ? "222222" : "111111";
}

} // namespace

// Signing in by SMS code, and what a signed-in account reads first.
class AccountsTest : public ServiceTest {
    Q_OBJECT

    struct Code {
        std::string hash, code, nextAction;
    };
    Code requestCode(const std::string& phone, const std::string& extra = {}) {
        const auto reply = s->get("/api/?do=sms/get&phoneNumber=" + phone + extra);
        if (reply.status() != 200) return {};
        const Json& data = reply.json["data"];
        return {data["hash"], data["code"], data["nextAction"]};
    }
    Reply login(const std::string& hash, const std::string& code, const std::string& extra = {}) {
        return s->get("/api/?do=farmer/login&type=login&deviceType=2&hash=" + hash + "&code=" + code + extra);
    }
    Reply check(const std::string& hash, const std::string& code) {
        return s->get("/api/?do=sms/check&type=register&hash=" + hash + "&code=" + code);
    }

public:
    AccountsTest() : ServiceTest(1700000000) {}

private slots:

    void loginJourney() {
        const auto& farmer = accounts::demoAccount("farmer");
        // Blanks as a user may type them; the number is kept without.
        const auto code = requestCode("0532%20100%200101");
        QCOMPARE(q(code.nextAction), QStringLiteral("login"));
        QCOMPARE(int(code.hash.size()), 32);
        QVERIFY(code.code.size() == 6 && code.code.find_first_not_of("0123456789") == std::string::npos);
        QCOMPARE(q(login(code.hash, wrongCodeFor(code.code)).body), q(CodeWrong));

        const auto reply = login(code.hash, code.code, "&deviceId=" + std::string(64, 'a'));
        const Json& user = reply.json["data"];
        QVERIFY((testing::keys(user) == std::vector<std::string>{"id", "fullname", "email", "phone", "type",
                                                                 "menu", "token", "location"}));
        QCOMPARE(q(user["phone"].get<std::string>() + " " + user["type"].get<std::string>()),
                 q(farmer.phone + " farmer"));
        QVERIFY(user["menu"].is_array() && user["menu"][0] == 0);
        const Json& location = user["location"];
        QCOMPARE(q(location["city"]["name"].get<std::string>() + "/" +
                   location["county"]["name"].get<std::string>()),
                 q(farmer.city + "/" + farmer.county));
        QVERIFY(location["county"]["latitude"].is_number());
        QCOMPARE(q(location["region"]["phonenumber"].get<std::string>()), q(farmer.regionPhonenumber));
        // No e-mail on record is JSON null, not an empty text.
        QVERIFY(s->login(accounts::demoAccount("loyalty").phone).json["data"]["email"].is_null());

        // A new token, not the demo one, and it opens authorised commands.
        const std::string token = user["token"];
        QVERIFY(token.size() == 64 && token != farmer.token);
        QCOMPARE(q(s->get("/api/?do=subject/message/check", token).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"count":0}})"));
        // The code logs in once.
        QCOMPARE(q(login(code.hash, code.code).body), q(CodeNotFound));

        // Logout withdraws that token only; the account's other sessions stay. The app clears its token
        // before it logs out, so logout also answers without one.
        QCOMPARE(q(s->get("/api/?do=farmer/logout", token).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":null})"));
        QCOMPARE(q(s->get("/api/?do=popup", token).body), q(Expired));
        QCOMPARE(q(s->get("/api/?do=subject/message/check&bearer=" + token).body), q(Expired));
        QCOMPARE(s->get("/api/?do=farmer/logout", {{"Authorization", "Bearer (null)"}}).status(), 200);
        QCOMPARE(s->get("/api/?do=popup", farmer.token).status(), 200);
    }

    void codeChecks() {
        QCOMPARE(q(check("0123456789abcdef0123456789abcdef", "123456").body), q(CodeNotFound));
        QCOMPARE(q(s->get("/api/?do=sms/check&code=123456").body), q(CodeNotFound));
        QCOMPARE(q(login("nope", "123456").body), q(CodeNotFound));

        const auto code = requestCode(UnknownPhone, "&type=register");
        QCOMPARE(q(code.nextAction), QStringLiteral("register"));
        QCOMPARE(q(check(code.hash, wrongCodeFor(code.code)).body), q(CodeWrong));
        QCOMPARE(q(check(code.hash, "").body), q(CodeWrong));
        QCOMPARE(q(check(code.hash, code.code).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":{"verified":true}})"));
        // Checking again does not spend it: registration comes after.
        QCOMPARE(check(code.hash, code.code).status(), 200);

        // A newer code for the phone retires the older one.
        const auto newer = requestCode(UnknownPhone);
        QCOMPARE(q(check(code.hash, code.code).body), q(CodeNotFound));
        QCOMPARE(check(newer.hash, newer.code).status(), 200);
    }

    void codesExpireAndRunOut() {
        const auto code = requestCode(accounts::demoAccount("loyalty").phone);
        *s->now += 299;
        QCOMPARE(check(code.hash, code.code).status(), 200);
        *s->now += 1;
        QCOMPARE(q(check(code.hash, code.code).body), q(CodeExpired));
        QCOMPARE(q(login(code.hash, code.code).body), q(CodeExpired));

        // Wrong codes run out; then even the right code is refused, through both commands.
        const auto fresh = requestCode(accounts::demoAccount("dealer").phone);
        for (int attempt = 1; attempt <= accounts::sms::MaxWrongAttempts; ++attempt)
            QCOMPARE(q(login(fresh.hash, wrongCodeFor(fresh.code)).body), q(CodeWrong));
        QCOMPARE(q(login(fresh.hash, fresh.code).body), q(CodeExpired));
        QCOMPARE(q(check(fresh.hash, fresh.code).body), q(CodeExpired));
    }

    void loginsRacingOnOneCode() {
        const auto code = requestCode(accounts::demoAccount("adminUser").phone);
        const std::string target = "/api/?do=farmer/login&hash=" + code.hash + "&code=" + code.code;
        QCOMPARE(s->acceptedAtOnce(8, [&](httplib::Client& client) { return client.Get(target); }), 1);
    }

    void accountStatesAtLogin() {
        // An inactive dealer is known, and its right code ends in the activation notice.
        auto code = requestCode(accounts::demoAccount("dealer", false).phone);
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
        QCOMPARE(check(code.hash, code.code).status(), 200);
    }

    void malformedPhones_data() {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("error");
        const QString invalid = QStringLiteral("Lütfen geçerli bir cep telefonu numarası giriniz.");
        const QString missing = QStringLiteral("Lütfen cep telefonu numaranızı giriniz.");
        QTest::newRow("absent") << "" << missing;
        QTest::newRow("blanks") << "&phoneNumber=%20%20" << missing;
        QTest::newRow("10 digits") << "&phoneNumber=5321000101" << invalid;
        QTest::newRow("12 digits") << "&phoneNumber=053210001011" << invalid;
        QTest::newRow("landline") << "&phoneNumber=02121000101" << invalid;
        QTest::newRow("dashes") << "&phoneNumber=0532-100-0101" << invalid;
        QTest::newRow("country code") << "&phoneNumber=%2B905321000101" << invalid;
    }

    void malformedPhones() {
        QFETCH(QString, query);
        QFETCH(QString, error);
        const auto reply = s->get("/api/?do=sms/get" + query.toStdString());
        QCOMPARE(q(reply.body),
                 q(envelope::serialize(envelope::rejection({{"phoneNumber", error.toStdString()}}))));
    }

    void popupForOneAccount() {
        const auto& farmer = accounts::demoAccount("farmer");
        const auto& member = accounts::demoAccount("loyalty");
        s->server->setPopupActive(false);
        QVERIFY(s->server->setPopupActiveFor(farmer.phone, true));
        QVERIFY(!s->server->setPopupActiveFor(UnknownPhone, true));
        auto popupOf = [&](const std::string& token) {
            return s->get("/api/?do=popup", token).json["data"]["popup"];
        };
        QCOMPARE(q(popupOf(farmer.token)["header"].get<std::string>()),
                 QStringLiteral("Bahar Kampanyası Başladı!"));
        QVERIFY(popupOf(member.token).is_null());

        // Both switches on: shown to everybody; the farmer's off leaves the global one.
        s->server->setPopupActive(true);
        s->server->setPopupActiveFor(farmer.phone, false);
        QVERIFY(popupOf(farmer.token).is_object() && popupOf(member.token).is_object());
        s->server->setPopupActive(false);
        QVERIFY(popupOf(farmer.token).is_null());

        // The demo control takes a phone too.
        auto demo = [&](const std::string& phone) {
            return Reply::from(s->client->Post("/_demo/popup", Json{{"on", true}, {"phone", phone}}.dump(),
                                               "application/json"));
        };
        QVERIFY(demo(member.phone).json["data"]["popup"].is_object());
        QVERIFY(popupOf(member.token).is_object() && popupOf(farmer.token).is_null());
        QCOMPARE(demo(UnknownPhone).http, 400);
    }

    // Below the HTTP layer: what the replies do not show.
    void storedSideOfTheLogin() {
        Database& db = *s->db;
        std::int64_t now = 1'000;
        std::vector<std::pair<std::string, std::string>> sent;
        Dispatch dispatch([](const std::string&) { return std::optional<Caller>(); });
        accounts::registerLoginCommands(
            dispatch, db,
            {[&] { return now; },
             [&](const std::string& phone, const std::string& code) { sent.emplace_back(phone, code); }, true});
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
        QCOMPARE(q(sent[0].first + " " + sent[0].second),
                 q(farmer.phone + " " + issued["code"].get<std::string>()));

        // A code sent as a JSON number matches too; the device is kept as text.
        const auto reply = call("farmer/login", {{"hash", issued["hash"]},
                                                 {"code", std::stoi(issued["code"].get<std::string>())},
                                                 {"deviceId", "abc123"},
                                                 {"deviceType", 2}});
        QCOMPARE(reply["status"].get<int>(), 200);
        QCOMPARE(q(*db.queryRow("SELECT device_id, device_type FROM users WHERE phone = ?", {farmer.phone})),
                 QStringLiteral(R"({"device_id":"abc123","device_type":"2"})"));

        // A registration finds the phone of a verified code for half an hour, and only until used.
        issued = call("sms/get", {{"phoneNumber", UnknownPhone}, {"type", "register"}})["data"];
        const auto hash = issued["hash"].get<std::string>();
        QCOMPARE(
            db.scalar("SELECT COUNT(*) FROM sms_challenges WHERE hash = ? AND purpose = 'register'", {hash}),
            std::int64_t(1));
        QVERIFY(!accounts::sms::verifiedPhone(db, hash, now));
        QCOMPARE(call("sms/check", {{"hash", hash}, {"code", issued["code"]}})["status"].get<int>(), 200);
        now += accounts::sms::RegistrationWindowSeconds - 1;
        QCOMPARE(q(accounts::sms::verifiedPhone(db, hash, now).value_or("")), q(UnknownPhone));
        QVERIFY(accounts::sms::consume(db, hash));
        QVERIFY(!accounts::sms::consume(db, hash));
        QVERIFY(!accounts::sms::verifiedPhone(db, hash, now));

        // Old challenges are cleared away by later requests.
        now += 2 * 24 * 60 * 60;
        call("sms/get", {{"phoneNumber", farmer.phone}});
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM sms_challenges"), std::int64_t(1));
    }

    void unreadAnswersPerSide() {
        Database& db = *s->db;
        auto idOf = [&](const char* type) {
            return db.scalar("SELECT id FROM users WHERE phone = ?", {accounts::demoAccount(type).phone});
        };
        const auto farmer = idOf("farmer"), member = idOf("loyalty"), staff = idOf("adminUser");
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

        QCOMPARE(conversations::unreadCount(db, farmer, "farmer"), std::int64_t(1));
        QCOMPARE(conversations::unreadCount(db, member, "loyalty"), std::int64_t(1));
        // The answering side waits for the askers' messages in every subject.
        QCOMPARE(s->get("/api/?do=subject/message/check", testing::tokenOf("adminUser"))
                     .json["data"]["count"]
                     .get<int>(),
                 2);
        QCOMPARE(s->get("/api/?do=subject/message/check", testing::tokenOf("dealer"))
                     .json["data"]["count"]
                     .get<int>(),
                 2);
    }
};

QTEST_GUILESS_MAIN(AccountsTest)
#include "AccountsTest.moc"
