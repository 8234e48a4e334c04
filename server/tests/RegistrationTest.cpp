#include "accounts/Validation.h"
#include "core/Migrations.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

const std::string NewPhone = "05559998877";
const std::string HashInvalid = "Telefon doğrulamanızın süresi doldu, lütfen yeniden SMS kodu isteyiniz.";
const std::string ShopTaxNumber = "7710203344";
const std::string ShopIdentityNumber = "10000000146";

std::string firstError(const Reply& reply) {
    const Json& errors = reply.json["errors"];
    return errors.empty() ? std::string() : errors.begin()->get<std::string>();
}

} // namespace

class RegistrationTest : public ServiceTest {
    Q_OBJECT

    std::int64_t countyId(const char* city, const char* county) {
        return s->db->scalar("SELECT k.id FROM counties k JOIN cities c ON c.id = k.city_id"
                             " WHERE c.name = ? AND k.name = ?",
                             {std::string(city), std::string(county)});
    }

    // What the wizard sends for a farmer with two crops: one as added, one as edited afterwards
    // (kind under "id", no products).
    Json farmerForm(const std::string& hash) {
        return Json{
            {"email", "mehmet.kaya@ornek.com.tr"},
            {"deviceId", std::string(64, 'b')},
            {"countyId", countyId("Konya", "Karatay")},
            {"firstName", "Mehmet"},
            {"lastName", "Kaya"},
            {"hash", hash},
            {"fields",
             Json::array(
                 {Json{{"range", "12a"}, {"aps", {51, 53}}, {"produceId", 1}, {"name", "Buğday"}},
                  Json{{"range", "10000"}, {"aps", Json::array()}, {"id", 4}, {"name", "Ayçiçeği"}}})},
            {"etk-sms", "1"},
            {"etk-advertising", "0"},
            {"etk-email", "1"},
            {"term", "yes"},
            {"deviceType", 2}};
    }

    Json dealerForm(const std::string& hash) {
        Json form = farmerForm(hash);
        form.erase("fields");
        form["firstName"] = "Selim";
        form["lastName"] = "Öztürk";
        form["dealerName"] = "Öztürk Tarım Market";
        form["taxNumber"] = ShopTaxNumber;
        form["TCNo"] = ShopIdentityNumber;
        return form;
    }

private slots:

    void identityNumbers() {
        // "19090909018": 7 x 1 - 36 is negative, so the 10th digit needs a mod that stays positive.
        for (const char* valid : {"10000000146", "38492017510", "11111111110", "19090909018"})
            QVERIFY2(accounts::isValidIdentityNumber(valid), valid);
        for (const char* invalid : {"10000000156", "10000000147", "01000000146", "1000000014", "100000001460",
                                    "1000000014a", "10000 00146", ""})
            QVERIFY2(!accounts::isValidIdentityNumber(invalid), invalid);
    }

    void farmerRegistersAndIsSignedIn() {
        const std::string hash = s->verifiedHash(NewPhone);
        const Reply reply = s->post("farmer/register", farmerForm(hash));
        QCOMPARE(reply.status(), 200);
        const Json& user = reply.json["data"];
        QVERIFY((keys(user) == std::vector<std::string>{"id", "fullname", "email", "phone", "type", "menu",
                                                        "token", "location"}));
        QCOMPARE(q(user["fullname"].get<std::string>() + " " + user["phone"].get<std::string>() + " " +
                   user["type"].get<std::string>()),
                 q("Mehmet Kaya " + NewPhone + " farmer"));
        QCOMPARE(q(user["location"]["city"]["name"].get<std::string>() + "/" +
                   user["location"]["county"]["name"].get<std::string>()),
                 QStringLiteral("Konya/Karatay"));
        QVERIFY(!user["location"]["region"]["phonenumber"].get<std::string>().empty());

        // The token works at once; all three permissions answered, so no consent panel.
        const std::string token = user["token"];
        const Json profile = s->get("/api/?do=farmer/profile", s->bearer(token)).json["data"];
        QCOMPARE(profile["etkPopup"].get<int>(), 0);

        // The crops are his farms at once: "12a" reads as 12, the edited crop's kind came under "id",
        // and each farm starts in a period of its crop.
        const Json farms =
            s->get("/api/?do=farmer/produces", s->bearer(token)).json["data"]["farmerProduces"];
        QCOMPARE(int(farms.size()), 2);
        auto summary = [](const Json& farm) {
            return farm["name"].get<std::string>() + " " + farm["range"].dump() + " " +
                   farm["produceId"].dump() + " " + farm["aps"].dump();
        };
        QCOMPARE(q(summary(farms[0])),
                 QStringLiteral(R"(Buğday 12 1 [{"id":51,"name":"Tarvenza<sup>&reg;</sup> 250 EC"},)"
                                R"({"id":53,"name":"Kelvaro<sup>&reg;</sup> 70 WG"}])"));
        QCOMPARE(q(summary(farms[1])), QStringLiteral("Ayçiçeği 10000 4 []"));
        for (const Json& farm : farms)
            QVERIFY(farm["periodId"].is_number_integer() && farm["period"].is_string());
        const auto stored =
            s->db->queryRow("SELECT etk_sms, etk_email, etk_advertising, device_id, device_type"
                            " FROM users WHERE phone = ?",
                            {NewPhone});
        QCOMPARE(q(*stored), q(Json{{"etk_sms", 1},
                                    {"etk_email", 1},
                                    {"etk_advertising", 0},
                                    {"device_id", std::string(64, 'b')},
                                    {"device_type", "2"}}));

        // The hash is spent; the account now signs in by SMS like any other.
        QCOMPARE(q(firstError(s->post("farmer/register", farmerForm(hash)))), q(HashInvalid));
        const Reply login = s->login(NewPhone);
        QCOMPARE(login.status(), 200);
        QCOMPARE(q(login.json["data"]["id"]), q(user["id"]));
    }

    void farmerWithoutCropsOrAnswers() {
        // A login-path code (no "type") that found no account is good for registering too.
        const Json data = s->get("/api/?do=sms/get&phoneNumber=" + NewPhone).json["data"];
        const std::string hash = data["hash"];
        s->get("/api/?do=sms/check&type=" + data["nextAction"].get<std::string>() + "&hash=" + hash +
               "&code=" + data["code"].get<std::string>());
        Json form = farmerForm(hash);
        for (const char* key : {"fields", "etk-sms", "etk-advertising", "etk-email", "email", "deviceId"})
            form.erase(key);
        const Reply reply = s->post("farmer/register", form);
        QCOMPARE(reply.status(), 200);
        QVERIFY(reply.json["data"]["email"].is_null());
        const std::string token = reply.json["data"]["token"];
        QCOMPARE(s->get("/api/?do=farmer/profile", s->bearer(token)).json["data"]["etkPopup"].get<int>(), 1);
        QVERIFY(s->get("/api/?do=farmer/produces", s->bearer(token)).json["data"]["farmerProduces"].empty());
    }

    // Crops of registrations made before they became farms: the migration moves them and drops the
    // table they were kept in.
    void keptRegistrationCropsBecomeFarms() {
        Json form = farmerForm(s->verifiedHash(NewPhone));
        form.erase("fields");
        const Reply reply = s->post("farmer/register", form);
        const std::int64_t userId = reply.json["data"]["id"];
        const std::string token = reply.json["data"]["token"];

        // The database as it stood before: the table, its rows, and no record of the migration.
        s->db->exec("DELETE FROM schema_migrations WHERE version = 23");
        s->db->exec("CREATE TABLE registration_fields (id INTEGER PRIMARY KEY,"
                    " user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,"
                    " produce_id INTEGER NOT NULL REFERENCES produces(id), size REAL NOT NULL,"
                    " aps TEXT NOT NULL DEFAULT '[]',"
                    " created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now')))");
        s->db->execute("INSERT INTO registration_fields (user_id, produce_id, size, aps) VALUES"
                       " (?, 4, 7.5, '[53,51]'), (?, 1, 12, '[]')",
                       {userId, userId});
        const auto farmsBefore = s->db->scalar("SELECT COUNT(*) FROM farms");

        QCOMPARE(s->db->migrate(migrations()), 1);
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM sqlite_master WHERE name = 'registration_fields'"),
                 std::int64_t(0));
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM farms"), farmsBefore + 2);
        const Json farms =
            s->get("/api/?do=farmer/produces", s->bearer(token)).json["data"]["farmerProduces"];
        QCOMPARE(int(farms.size()), 2);
        // The products in the order chosen.
        QCOMPARE(q(farms[0]["name"].get<std::string>() + " " + farms[0]["range"].dump() + " " +
                   farms[0]["aps"][0]["id"].dump() + "," + farms[0]["aps"][1]["id"].dump()),
                 QStringLiteral("Ayçiçeği 7.5 53,51"));
        QCOMPARE(q(farms[1]["name"].get<std::string>() + " " + farms[1]["aps"].dump()),
                 QStringLiteral("Buğday []"));
        // The period is the one a farm made today gets.
        const Reply made = s->post("produce/set", Json{{"produceId", 4}, {"range", 3}}, s->bearer(token));
        QCOMPARE(q(farms[0]["periodId"]), q(made.json["data"]["farmerProduce"]["periodId"]));
    }

    void farmerRejections_data() {
        QTest::addColumn<QString>("change"); // JSON merged into the valid form
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("message");
        auto row = [](const char* name, const char* change, const char* field, const char* message) {
            QTest::newRow(name) << QString::fromUtf8(change) << field << QString::fromUtf8(message);
        };
        row("unknown hash", R"({"hash":"0123456789abcdef0123456789abcdef"})", "hash",
            "Telefon doğrulamanızın süresi doldu, lütfen yeniden SMS kodu isteyiniz.");
        row("no first name", R"({"firstName":"  "})", "firstName", "Lütfen adınızı giriniz.");
        row("digits in last name", R"({"lastName":"Kaya2"})", "lastName",
            "Lütfen geçerli bir soyad giriniz.");
        row("no county", R"({"countyId":null})", "countyId", "Lütfen il ve ilçe seçiniz.");
        row("unknown county", R"({"countyId":"99999"})", "countyId", "Lütfen il ve ilçe seçiniz.");
        row("bad e-mail", R"({"email":"mehmet@ornek"})", "email",
            "Lütfen geçerli bir e-posta adresi giriniz.");
        row("four crops",
            R"({"fields":[{"produceId":1,"range":"5"},{"produceId":2,"range":"5"},)"
            R"({"produceId":3,"range":"5"},{"produceId":4,"range":"5"}]})",
            "fields", "En fazla 3 tarla ekleyebilirsiniz.");
        row("crop without kind", R"({"fields":[{"range":"5"}]})", "fields", "Ürün seçmediniz.");
        row("unknown kind", R"({"fields":[{"produceId":999,"range":"5"}]})", "fields",
            "Seçtiğiniz ürün bulunamadı.");
        row("size 0", R"({"fields":[{"produceId":1,"range":"0"}]})", "fields",
            "Tarla büyüklüğünü girmediniz.");
        row("size not a number", R"({"fields":[{"produceId":1,"range":"abc"}]})", "fields",
            "Tarla büyüklüğünü girmediniz.");
        row("size above limit", R"({"fields":[{"produceId":1,"range":"10001"}]})", "fields",
            "Tarla büyüklüğü 10000 dekardan büyük olamaz.");
        row("four products", R"({"fields":[{"produceId":1,"range":"5","aps":[51,52,53,54]}]})", "fields",
            "Bir tarla için en fazla 3 zirai ürün seçebilirsiniz.");
        row("unknown product", R"({"fields":[{"produceId":1,"range":"5","aps":[999]}]})", "fields",
            "Seçtiğiniz zirai ürün bulunamadı.");
        row("fields not a list", R"({"fields":{"produceId":1}})", "fields",
            "Tarla bilgileri okunamadı, lütfen tarlalarınızı yeniden ekleyiniz.");
        row("permission not 1 or 0", R"({"etk-email":"evet"})", "etk-email",
            "İzin tercihiniz okunamadı, lütfen yeniden seçiniz.");
        row("terms not accepted", R"({"term":"no"})", "term",
            "Kayıt olmak için Kullanım Şartlarını onaylamanız gerekmektedir.");
    }

    void farmerRejections() {
        QFETCH(QString, change);
        QFETCH(QString, field);
        QFETCH(QString, message);
        const std::string hash = s->verifiedHash(NewPhone);
        Json form = farmerForm(hash);
        form.update(Json::parse(change.toStdString()));
        const Reply reply = s->post("farmer/register", form);
        QCOMPARE(reply.status(), 400);
        QCOMPARE(q(reply.json["errors"].dump()),
                 q(Json{{field.toStdString(), message.toStdString()}}.dump()));
        QCOMPARE(q(reply.json["message"].get<std::string>()), message);
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {NewPhone}), std::int64_t(0));
        // A rejection keeps the hash: the corrected form goes through with it.
        QCOMPARE(s->post("farmer/register", farmerForm(hash)).status(), 200);
    }

    void everyProblemIsListedInFormOrder() {
        const Reply reply = s->post("farmer/register", Json::object());
        QVERIFY((keys(reply.json["errors"]) ==
                 std::vector<std::string>{"hash", "firstName", "lastName", "countyId", "term"}));
    }

    void knownNumberCannotRegisterAgain() {
        const auto& farmer = accounts::demoAccount("farmer");
        const Reply reply = s->post("farmer/register", farmerForm(s->verifiedHash(farmer.phone)));
        QCOMPARE(q(reply.json["errors"].dump()),
                 QStringLiteral(R"({"phoneNumber":"Bu numara ile kayıtlı bir hesap zaten bulunuyor."})"));
    }

    void registrationsRacingOnOneHash() {
        const std::string hash = s->verifiedHash(NewPhone);
        const std::string body = farmerForm(hash).dump();
        QCOMPARE(s->acceptedAtOnce(6,
                                   [&](httplib::Client& client) {
                                       return client.Post("/api/?do=farmer/register", body, "application/json");
                                   }),
                 1);
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {NewPhone}), std::int64_t(1));
    }

    void dealerCheck() {
        // As the app sends it: the header without a token, "do" in the body too.
        const httplib::Headers noToken{{"Authorization", "Bearer (null)"}};
        auto check = [&](const std::string& tax, const std::string& identity) {
            return s->post("dealer/check-information-field",
                           Json{{"do", "dealer/check-information-field"},
                                {"taxNumber", tax},
                                {"dealerName", "Öztürk Tarım Market"},
                                {"TCNo", identity}},
                           noToken);
        };
        QCOMPARE(q(check(ShopTaxNumber, ShopIdentityNumber).body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},"data":null})"));
        QCOMPARE(q(check("12345", "10000000147").json["errors"].dump()),
                 QStringLiteral(R"({"taxNumber":"Vergi numarası 10 haneli olmalıdır.",)"
                                R"("TCNo":"Lütfen geçerli bir T.C. Kimlik Numarası giriniz."})"));
        QCOMPARE(q(check("77102033a4", ShopIdentityNumber).json["errors"].dump()),
                 QStringLiteral(R"({"taxNumber":"Vergi numarası 10 haneli olmalıdır."})"));
        QCOMPARE(q(check("", "").json["errors"].dump()),
                 QStringLiteral(R"({"taxNumber":"Lütfen vergi numarasını giriniz.",)"
                                R"("TCNo":"Lütfen T.C. Kimlik Numaranızı giriniz."})"));
        // The demo dealer's shop holds this tax number already.
        QCOMPARE(q(check("4830127965", ShopIdentityNumber).json["errors"].dump()),
                 QStringLiteral(R"({"taxNumber":"Bu vergi numarası ile kayıtlı bir bayi bulunuyor."})"));
    }

    void dealerWaitsForActivation() {
        const std::string hash = s->verifiedHash(NewPhone);
        const Reply registered = s->post("dealer/register", dealerForm(hash));
        QCOMPARE(
            q(registered.body),
            QStringLiteral(
                R"({"status":200,"message":"Kayıt işleminiz başarıyla gerçekleştirildi. )"
                R"(Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz","errors":{},"data":null})"));
        // A second shop can't take the same tax number, whatever its phone.
        const Reply second = s->post("dealer/register", dealerForm(s->verifiedHash("05559998800")));
        QCOMPARE(q(firstError(second)), QStringLiteral("Bu vergi numarası ile kayıtlı bir bayi bulunuyor."));

        QCOMPARE(s->login(NewPhone).json["data"]["action"].get<std::string>(),
                 std::string("notActiveDealer"));

        // Staff see him waiting and open his account.
        const auto adminToken = accounts::demoAccount("adminUser").token;
        const Json pending =
            s->get("/api/?do=admin/pending-dealers", s->bearer(adminToken)).json["data"]["dealers"];
        QCOMPARE(int(pending.size()), 2); // he and the demo dealer not yet activated
        QCOMPARE(q(pending[1]["dealerName"].get<std::string>()), QStringLiteral("Öztürk Tarım Market"));
        const std::string activate = "/api/?do=admin/activate-dealer&phone=" + NewPhone;
        QCOMPARE(s->login(NewPhone).status(), 400);
        QCOMPARE(s->get(activate, s->bearer(adminToken)).status(), 200);

        const Reply login = s->login(NewPhone);
        QCOMPARE(login.status(), 200);
        QCOMPARE(login.json["data"]["type"].get<std::string>(), std::string("dealer"));
        const std::string token = login.json["data"]["token"];
        QCOMPARE(q(s->get("/api/?do=dealer/information", s->bearer(token)).json["data"].dump()),
                 q(Json{{"dealerName", "Öztürk Tarım Market"},
                        {"TCNo", ShopIdentityNumber},
                        {"taxNumber", ShopTaxNumber}}
                       .dump()));
        QCOMPARE(s->get("/api/?do=notifications&ignore_read=1", s->bearer(token))
                     .json["data"]["unreadCount"]
                     .get<int>(),
                 1);
    }

    void dealerRegistrationChecksTheShop() {
        Json form = dealerForm(s->verifiedHash(NewPhone));
        form["TCNo"] = "10000000147";
        form["dealerName"] = "";
        const Reply reply = s->post("dealer/register", form);
        QCOMPARE(q(reply.json["errors"].dump()),
                 QStringLiteral(R"({"dealerName":"Lütfen bayi adını giriniz.",)"
                                R"("TCNo":"Lütfen geçerli bir T.C. Kimlik Numarası giriniz."})"));
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {NewPhone}), std::int64_t(0));
    }

    // The phone may come in the query, with an empty body, or in the body; a farmer is no dealer to activate.
    void demoActivationControl() {
        const auto& waiting = accounts::demoAccount("dealer", false);
        const auto reply = Reply::from(
            s->client->Post(("/_demo/activate?phone=" + waiting.phone).c_str(), "", "application/json"));
        QCOMPARE(q(reply.body),
                 QStringLiteral(R"({"status":200,"message":"","errors":{},)"
                                R"("data":{"phone":"05361000505","active":true,"activated":true}})"));
        QCOMPARE(s->login(waiting.phone).status(), 200);
        const Json farmer{{"phone", accounts::demoAccount("farmer").phone}};
        QCOMPARE(Reply::from(s->client->Post("/_demo/activate", farmer.dump(), "application/json")).http,
                 400);
        QVERIFY(!s->server->activateDealer(NewPhone));
    }
};

QTEST_GUILESS_MAIN(RegistrationTest)
#include "RegistrationTest.moc"
