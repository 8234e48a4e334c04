#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

const auto& TheFarmer = accounts::demoAccount("farmer");
const auto& TheMember = accounts::demoAccount("loyalty");
const auto& TheDealer = accounts::demoAccount("dealer");

} // namespace

// The signed-in side of an account: profile, consent, shop data and notifications.
class ProfileTest : public ServiceTest {
    Q_OBJECT

    Json profile(const std::string& token) {
        return s->get("/api/?do=farmer/profile&bearer=" + token).json["data"];
    }
    Reply notifications(const std::string& token, const char* ignoreRead) {
        return s->get(std::string("/api/?do=notifications&ignore_read=") + ignoreRead, s->bearer(token));
    }
    int unread(const std::string& token) {
        return notifications(token, "1").json["data"]["unreadCount"].get<int>();
    }

private slots:

    void profileIsTheLoginRecordWithTheConsentFlag() {
        const Json login = s->login(TheFarmer.phone).json["data"];
        const Json record = profile(login["token"]);
        // Archived by the app as its user record: the login's members, the caller's own token, and
        // "etkPopup" last.
        std::vector<std::string> expected = keys(login);
        expected.push_back("etkPopup");
        QVERIFY(keys(record) == expected);
        QCOMPARE(q(record["token"].get<std::string>()), q(login["token"].get<std::string>()));
        QCOMPARE(q(record["location"]), q(login["location"]));
        QCOMPARE(record["etkPopup"].get<int>(), 0);
        QCOMPARE(q(profile(TheMember.token)["type"].get<std::string>()), QStringLiteral("loyalty"));
    }

    void consentAnswersCloseThePanel() {
        s->db->execute("UPDATE users SET etk_answered = 0 WHERE phone = ?", {TheFarmer.phone});
        QCOMPARE(profile(TheFarmer.token)["etkPopup"].get<int>(), 1);

        // Each of the three is needed, as "1" or "0".
        Reply reply =
            s->post("farmer/etk", Json{{"etk-sms", "1"}, {"etk-email", "yes"}}, s->bearer(TheFarmer.token));
        QCOMPARE(q(reply.json["errors"].dump()),
                 QStringLiteral(R"({"etk-advertising":"Lütfen izin tercihinizi belirtiniz.",)"
                                R"("etk-email":"İzin tercihiniz okunamadı, lütfen yeniden seçiniz."})"));
        QCOMPARE(profile(TheFarmer.token)["etkPopup"].get<int>(), 1);

        // Three refusals are an answer; the member's own answers are untouched.
        reply = s->post("farmer/etk", Json{{"etk-sms", "0"}, {"etk-advertising", "0"}, {"etk-email", "0"}},
                        s->bearer(TheFarmer.token));
        QCOMPARE(reply.status(), 200);
        QCOMPARE(reply.json["data"]["etkPopup"].get<int>(), 0);
        QCOMPARE(profile(TheFarmer.token)["etkPopup"].get<int>(), 0);
        reply = s->post("farmer/etk", Json{{"etk-sms", 1}, {"etk-advertising", "0"}, {"etk-email", true}},
                        s->bearer(TheMember.token));
        QCOMPARE(reply.status(), 200);
        QCOMPARE(q(s->db->query("SELECT etk_sms, etk_advertising, etk_email FROM users WHERE phone IN (?, ?)"
                                " ORDER BY phone",
                                {TheFarmer.phone, TheMember.phone})),
                 QStringLiteral(R"([{"etk_sms":0,"etk_advertising":0,"etk_email":0},)"
                                R"({"etk_sms":1,"etk_advertising":0,"etk_email":1}])"));
    }

    void profileUpdate() {
        const auto auth = s->bearer(TheFarmer.token);
        // Only "fullname" is shown by the app on a rejection, so it comes first.
        Reply reply = s->post("farmer/update-profile", Json{{"email", "yanlis"}, {"fullname", ""}}, auth);
        QCOMPARE(q(reply.json["errors"].dump()),
                 QStringLiteral(R"({"fullname":"Lütfen adınızı ve soyadınızı giriniz.",)"
                                R"("email":"Lütfen geçerli bir e-posta adresi giriniz."})"));
        reply =
            s->post("farmer/update-profile", Json{{"fullname", "Hasan Doğru"}, {"countyId", 99999}}, auth);
        QCOMPARE(q(reply.json["errors"].dump()),
                 QStringLiteral(R"({"countyId":"Seçtiğiniz ilçe bulunamadı."})"));

        // Without "countyId" the place stays; an empty e-mail clears the address.
        reply =
            s->post("farmer/update-profile", Json{{"email", ""}, {"fullname", " Hasan Ali Doğru "}}, auth);
        QCOMPARE(reply.status(), 200);
        QCOMPARE(q(reply.json["data"]["fullname"].get<std::string>()), QStringLiteral("Hasan Ali Doğru"));
        QVERIFY(reply.json["data"]["email"].is_null());
        QCOMPARE(q(reply.json["data"]["location"]["county"]["name"].get<std::string>()), q(TheFarmer.county));
        QCOMPARE(q(reply.json["data"]["token"].get<std::string>()), q(TheFarmer.token));

        const auto bornova = s->db->scalar("SELECT id FROM counties WHERE name = 'Bornova'");
        reply = s->post("farmer/update-profile",
                        Json{{"email", "hasan@ornek.com.tr"},
                             {"countyId", std::to_string(bornova)},
                             {"fullname", "Hasan Doğru"}},
                        auth);
        QCOMPARE(q(reply.json["data"]["location"]["city"]["name"].get<std::string>()),
                 QStringLiteral("İzmir"));
        QCOMPARE(q(profile(TheFarmer.token)["email"].get<std::string>()), QStringLiteral("hasan@ornek.com.tr"));
        // Nobody else changed.
        QCOMPARE(q(profile(TheMember.token)["fullname"].get<std::string>()), q(TheMember.fullname));
    }

    void dealerShopData() {
        const auto auth = s->bearer(TheDealer.token);
        QCOMPARE(q(s->get("/api/?do=dealer/information", auth).json["data"]["dealerName"].get<std::string>()),
                 QStringLiteral("Erdem Tarım Zirai İlaç ve Tohumculuk"));

        // The app sends the token in the header only. The other demo shop's tax number is taken.
        Reply reply = s->post("dealer/update-information",
                              Json{{"taxNumber", "1209384756"},
                                   {"dealerName", "Erdem Tarım"},
                                   {"TCNo", "38492017511"},
                                   {"term", "yes"},
                                   {"deviceType", 2}},
                              auth);
        QCOMPARE(q(reply.json["errors"].dump()),
                 QStringLiteral(R"({"taxNumber":"Bu vergi numarası ile kayıtlı bir bayi bulunuyor.",)"
                                R"("TCNo":"Lütfen geçerli bir T.C. Kimlik Numarası giriniz."})"));
        // Its own tax number is no conflict.
        reply = s->post(
            "dealer/update-information",
            Json{{"taxNumber", "4830127965"}, {"dealerName", "Erdem Tarım"}, {"TCNo", "10000000146"}}, auth);
        QCOMPARE(
            q(reply.json["data"].dump()),
            QStringLiteral(R"({"dealerName":"Erdem Tarım","TCNo":"10000000146","taxNumber":"4830127965"})"));
    }

    void notificationsMarkedPerAccount() {
        QCOMPARE(unread(TheFarmer.token), 2);
        QCOMPARE(unread(TheFarmer.token), 2); // counting leaves the marks
        QCOMPARE(unread(TheMember.token), 2);

        // The list shows each notice as it was, newest first, and marks them all read.
        Reply list = notifications(TheFarmer.token, "0");
        const Json& notices = list.json["data"]["notifications"];
        QCOMPARE(int(notices.size()), 4);
        QVERIFY((keys(notices[0]) == std::vector<std::string>{"id", "message", "date", "read"}));
        QVERIFY(notices[0]["id"] > notices[1]["id"]);
        QCOMPARE(q(notices[0]["message"].get<std::string>()).left(5), QStringLiteral("Konya"));
        QCOMPARE(notices[0]["read"].get<int>(), 0);
        QCOMPARE(notices[3]["read"].get<int>(), 1);
        QCOMPARE(QString::fromStdString(notices[0]["date"]).size(), 16); // dd.MM.yyyy HH:mm
        QCOMPARE(list.json["data"]["unreadCount"].get<int>(), 0);
        QCOMPARE(unread(TheFarmer.token), 0);

        // Another account's marks and notices are its own.
        QCOMPARE(unread(TheMember.token), 2);
        QCOMPARE(int(notifications(TheMember.token, "1").json["data"]["notifications"].size()), 3);
        QCOMPARE(q(notifications(TheDealer.token, "0").json["data"].dump()),
                 QStringLiteral(R"({"notifications":[],"unreadCount":0})"));

        // A new notice counts until the list is opened again.
        const Reply added = Reply::from(s->client->Post(
            "/_demo/notify", Json{{"phone", TheFarmer.phone}, {"message", "Yeni bir etkinlik eklendi."}}.dump(),
            "application/json"));
        QCOMPARE(added.json["data"]["unreadCount"].get<int>(), 1);
        QCOMPARE(unread(TheFarmer.token), 1);
        QCOMPARE(unread(TheMember.token), 2);
        QCOMPARE(notifications(TheFarmer.token, "0").json["data"]["notifications"][0]["read"].get<int>(), 0);
        QCOMPARE(unread(TheFarmer.token), 0);
    }
};

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
