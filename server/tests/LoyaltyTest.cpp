#include "accounts/Accounts.h"
#include "loyalty/Loyalty.h"

#include <QTest>

#include <thread>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

std::string code(int n) {
    return loyalty::serialNumber(n);
}
httplib::Headers bareToken(const std::string& token) {
    return {{"Authorization", token}};
}
std::string type(const Reply& r) {
    return r.json["message"].value("type", "");
}
std::string text(const Reply& r) {
    return r.json["message"].value("text", "");
}

} // namespace

// Package codes: the farmer's scan credits a code once; the dealer's sale and gift transactions
// keep each code on one list and credit it once; the QR code, the web token and the portal.
class LoyaltyTest : public ServiceTest {
    Q_OBJECT

    // As the scan screen sends it: the token in the header and, encoded twice, in the query.
    Reply scan(const std::string& serial, const std::string& token = Farmer) {
        return s->get("/api/?do=agricultural-pesticide-code/scan&bearer=Bearer%2520" + token + "&serialNumber=" + serial,
                      s->bearer(token));
    }
    Reply dealer(const std::string& command, const Json& body, const std::string& token = Dealer) {
        return s->post(command, body, token);
    }
    std::string open(const std::string& token = Dealer, const std::string& kind = "sales") {
        const Reply r = dealer("dealer/create-transaction",
                               {{"type", kind}, {"qrCode", loyalty::DemoFarmerQr}, {"do", "dealer/create-transaction"}},
                               token);
        return r.json["data"].value("TransactionId", "");
    }
    Reply add(const Json& hash, int n, const std::string& token = Dealer) {
        return dealer("dealer/add-agricultural-pesticide-code", {{"hash", hash}, {"serialNumber", code(n)}}, token);
    }
    Reply confirm(const std::string& hash, const std::string& token = Dealer) {
        return s->get("/api/?do=dealer/confirm-agricultural-pesticide&hash=" + hash, s->bearer(token));
    }
    std::int64_t points(const std::string& phone) {
        return s->db->scalar("SELECT COALESCE(SUM(g.points), 0) FROM loyalty_ledger g JOIN users u ON u.id = g.user_id"
                             " WHERE u.phone = ?",
                             {phone});
    }
    std::string newAccount(const std::string& phone, const std::string& kind, bool active = true) {
        s->db->execute("INSERT INTO users (phone, fullname, type, active) VALUES (?, 'Deneme Hesap', ?, ?)",
                       {phone, kind, std::int64_t(active)});
        return accounts::issueToken(*s->db, s->db->lastInsertId());
    }

private slots:

    void scanCreditsACodeOnceAndAnswersEachRefusalApart() {
        const std::string phone = accounts::demoAccount("farmer").phone;
        const auto before = points(phone);
        Reply r = scan(code(1)); // a campaign product
        QCOMPARE(q(type(r)), "success");
        QVERIFY(r.json["data"]["name"].get<std::string>().find("<sup>&reg;</sup>") != std::string::npos);
        QVERIFY(q(r.json["data"]["image"].get<std::string>()).startsWith("http://127.0.0.1:"));
        QCOMPARE(q(r.json["data"]["campaignPoint"].get<std::string>()), "Kampanyadan <b>50 puan</b> kazandınız");
        QCOMPARE(q(r.json["data"]["purchasePoint"].get<std::string>()), "Bu üründen <b>40 puan</b> kazandınız");
        QCOMPARE(points(phone), before + 90);

        r = scan(code(1));
        QCOMPARE(q(type(r)), "warning");
        QVERIFY(q(text(r)).contains("daha önce okuttunuz"));
        QCOMPARE(points(phone), before + 90);
        QVERIFY(q(text(scan(code(1), Member))).contains("başka bir hesaba"));

        r = scan(code(2)); // no campaign on this product: the campaign text is null
        QCOMPARE(q(type(r)), "success");
        QVERIFY(r.json["data"]["campaignPoint"].is_null());

        QVERIFY(q(text(scan("8690000000000"))).contains("bulunamadı"));
        QVERIFY(q(text(scan(code(24)))).contains("kampanyası kapsamında değildir"));
        QVERIFY(q(text(scan(code(loyalty::FirstSeedBagCode)))).contains("zirai ilaç ambalajına ait değil"));
        QVERIFY(q(text(scan(code(16)))).contains("bayi satışında"));

        // Either credential alone will do.
        r = s->get("/api/?do=agricultural-pesticide-code/scan&bearer=Bearer%2520" + Farmer + "&serialNumber=" + code(5));
        QCOMPARE(q(type(r)), "success");
    }

    void bareTokenCommandsAndTheStableQrCode() {
        const httplib::Headers bare = bareToken(Farmer);
        QCOMPARE(q(s->get("/api/?do=farmer/qr-code", bare).json["data"]["qrCode"].get<std::string>()),
                 q(loyalty::DemoFarmerQr));
        const std::string web = s->get("/api/?do=webviewToken", bare).json["data"]["webviewToken"];
        QVERIFY(web.size() >= 32);

        const std::string other = newAccount("05339990001", "farmer");
        const std::string first = s->get("/api/?do=farmer/qr-code", bareToken(other)).json["data"]["qrCode"];
        s->start();
        QCOMPARE(q(s->get("/api/?do=farmer/qr-code", bareToken(other)).json["data"]["qrCode"].get<std::string>()),
                 q(first));
        QCOMPARE(q(s->get("/api/?do=farmer/qr-code", bare).json["data"]["qrCode"].get<std::string>()),
                 q(loyalty::DemoFarmerQr));
    }

    void portalShowsOnlyTheWebTokensAccount() {
        auto webToken = [&](const std::string& t) {
            return s->get("/api/?do=webviewToken", bareToken(t)).json["data"]["webviewToken"].get<std::string>();
        };
        const Reply own = s->get("/loyalty/Login/INdex?token=" + webToken(Farmer));
        QCOMPARE(own.http, 200);
        QVERIFY(own.contentType.find("text/html") == 0);
        QVERIFY(q(own.body).contains("Hasan Doğru"));
        QVERIFY(q(own.body).contains(QString::number(points(accounts::demoAccount("farmer").phone)) + " puan"));
        QVERIFY(q(own.body).contains("Erdem Tarım")); // the demo sale's dealer in the history
        QVERIFY(!q(own.body).contains("<sup>"));

        const Reply other = s->get("/loyalty/Login/INdex?token=" + webToken(Member));
        QVERIFY(q(other.body).contains("Ayşe Kaplan"));
        QVERIFY(!q(other.body).contains("Hasan Doğru"));

        for (const std::string& target : std::vector<std::string>{"/loyalty/Login/INdex", "/loyalty/Login/INdex?token=yanlis",
                                                                  "/loyalty/Login/INdex?token=" + Farmer}) {
            const Reply refused = s->get(target);
            QCOMPARE(refused.http, 401);
            QVERIFY2(q(refused.body).contains("Giriş yapılamadı") && !q(refused.body).contains("Hasan"), target.c_str());
        }
        const std::string late = webToken(Farmer);
        s->now->store(systemSeconds() + 3600);
        QVERIFY(q(s->get("/loyalty/Login/INdex?token=" + late).body).contains("süresi dolmuş"));
    }

    void saleJourneyCreditsTheFarmerOnce() {
        const std::string phone = accounts::demoAccount("farmer").phone;
        const auto before = points(phone);
        const std::string hash = open();
        QCOMPARE(hash.size(), size_t(32));

        Reply r = add(hash, 3);
        QCOMPARE(q(type(r)), "success");
        QVERIFY(r.json["data"].contains("name") && r.json["data"].contains("image"));
        QVERIFY(q(text(add(hash, 3))).contains("zaten listenizde"));
        QVERIFY(q(text(add(hash, 16))).contains("daha önce satılmış"));
        QVERIFY(q(text(add(hash, 13))).contains("okutulmuş"));
        QVERIFY(q(text(add(hash, loyalty::FirstSeedBagCode))).contains("zirai ilaç"));
        QVERIFY(q(text(dealer("dealer/add-agricultural-pesticide-code", {{"hash", hash}, {"serialNumber", "123"}})))
                    .contains("bulunamadı"));
        QCOMPARE(q(type(add(nullptr, 4))), "success"); // no hash: the dealer's open transaction

        // The list finds the transaction from the bearer alone and gives the same id back.
        r = s->post("dealer/agricultural-pesticide-list", Json::object(), Dealer);
        QCOMPARE(q(r.json["data"]["transactionId"].get<std::string>()), q(hash));
        QCOMPARE(r.json["data"]["list"].size(), size_t(2));

        auto query = "&hash=" + hash + "&serialNumber=" + code(4);
        r = dealer("dealer/get-agricultural-pesticide-code" + query, {{"hash", hash}, {"serialNumber", code(4)}});
        QCOMPARE(q(type(r)), "success");
        r = dealer("dealer/delete-agricultural-pesticide-code", {{"hash", hash}, {"serialNumber", code(4)}});
        QCOMPARE(q(type(r)), "success");
        QVERIFY(q(text(dealer("dealer/get-agricultural-pesticide-code" + query, {{"hash", hash}, {"serialNumber", code(4)}})))
                    .contains("listenizde bulunmuyor"));

        r = confirm(hash);
        QCOMPARE(q(type(r)), "success");
        QCOMPARE(points(phone), before + 25 + 25); // the third product with its campaign
        QVERIFY(q(text(confirm(hash))).contains("daha önce onaylanmış"));
        QCOMPARE(points(phone), before + 50);
        QVERIFY(q(text(scan(code(3)))).contains("bayi satışında"));
        QVERIFY(q(text(s->post("dealer/agricultural-pesticide-list", Json::object(), Dealer))).contains("Açık bir işleminiz"));

        // A gift earns nothing, and its code no longer earns by a scan.
        const std::string gift = open(Dealer, "award");
        add(gift, 7);
        QCOMPARE(q(type(confirm(gift))), "success");
        QCOMPARE(points(phone), before + 50);
        QVERIFY(q(text(scan(code(7)))).contains("hediye"));
        QVERIFY(q(text(confirm(open()))).contains("Listede hiç ürün yok"));
    }

    void onlyTheOwningActiveDealerTouchesATransaction() {
        const std::string second = newAccount("05429990002", "dealer");
        QVERIFY(q(text(dealer("dealer/create-transaction", {{"type", "sales"}, {"qrCode", "EKNQ-YOK"}})))
                    .contains("Geçersiz QR"));
        QVERIFY(q(text(dealer("dealer/create-transaction", {{"type", ""}, {"qrCode", loyalty::DemoFarmerQr}})))
                    .contains("İşlem türü"));
        const std::string mine = open();
        const std::string theirs = open(second);
        QCOMPARE(q(type(add(mine, 8))), "success");
        QVERIFY(q(text(add(theirs, 8, second))).contains("başka bir açık işlemde"));
        QVERIFY(q(text(add(mine, 9, second))).contains("İşlem bulunamadı"));
        QVERIFY(q(text(confirm(mine, second))).contains("İşlem bulunamadı"));
        const std::string inactive = newAccount("05429990003", "dealer", false);
        QCOMPARE(add(mine, 9, inactive).status(), 401);

        // Ended from the scanner, with no body: the code is free for the other dealer.
        const Reply ended = Reply::from(s->client->Post("/api/?do=dealer/delete-transaction", s->bearer(Dealer), std::string(), std::string()));
        QCOMPARE(q(type(ended)), "success");
        QCOMPARE(q(type(add(theirs, 8, second))), "success");
        QVERIFY(q(text(add(mine, 10))).contains("sonlandırılmış"));
    }

    // Two dealers add the same codes at once and each confirms twice at once: every code ends on
    // exactly one confirmed list and is credited once.
    void racingDealersLeaveEachCodeOnOneList() {
        const std::string second = newAccount("05429990004", "dealer");
        const std::string phone = accounts::demoAccount("farmer").phone;
        const auto before = points(phone);
        const std::string hashes[] = {open(), open(second)};
        const std::string tokens[] = {Dealer, second};
        std::vector<std::thread> workers;
        for (int d = 0; d < 2; ++d)
            workers.emplace_back([&, d] {
                httplib::Client client("127.0.0.1", s->server->port());
                for (int n = 100; n < 140; ++n)
                    client.Post("/api/?do=dealer/add-agricultural-pesticide-code", s->bearer(tokens[d]),
                                Json{{"hash", hashes[d]}, {"serialNumber", code(n)}}.dump(), "application/json");
                for (int i = 0; i < 2; ++i)
                    client.Get(("/api/?do=dealer/confirm-agricultural-pesticide&hash=" + hashes[d]).c_str(),
                               s->bearer(tokens[d]));
            });
        for (auto& w : workers) w.join();

        std::int64_t expected = 0;
        for (int n = 100; n < 140; ++n) {
            const std::string serial = code(n);
            QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM loyalty_transaction_codes t JOIN loyalty_transactions x"
                                   " ON x.id = t.transaction_id WHERE t.serial = ? AND x.state = 'confirmed'",
                                   {serial}),
                     std::int64_t(1));
            expected += s->db->scalar("SELECT l.points + l.campaign_points FROM package_codes c JOIN loyalty_products l"
                                      " ON l.product_id = c.product_id WHERE c.serial = ?",
                                      {serial});
        }
        QCOMPARE(points(phone), before + expected);
    }
};

QTEST_GUILESS_MAIN(LoyaltyTest)
#include "LoyaltyTest.moc"
