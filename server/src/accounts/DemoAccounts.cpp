#include "accounts/DemoAccounts.h"

#include "accounts/Accounts.h"

#include <stdexcept>

namespace ekinora::server::accounts {

const std::vector<DemoAccount>& demoAccounts() {
    static const std::vector<DemoAccount> list = {
        {"Çiftçi", "farmer", "Hasan Doğru", "05321000101", "hasan.dogru@ornek.com.tr", "Konya", "Çumra",
         "Serdar Akın", "05301110011", true, "demo-farmer-token"},
        {"Kulüp üyesi", "loyalty", "Ayşe Kaplan", "05331000202", std::nullopt, "Manisa", "Alaşehir",
         "Gülay Sezer", "05301110022", true, "demo-loyalty-token"},
        {"Bayi", "dealer", "Murat Erdem", "05421000303", "erdem.tarim@ornek.com.tr", "Adana", "Ceyhan",
         "Okan Yıldız", "05301110033", true, "demo-dealer-token"},
        {"Ziraat mühendisi", "adminUser", "Elif Tunç", "05051000404", "elif.tunc@ekinora.com.tr", "İzmir",
         "Bornova", "Okan Yıldız", "05301110033", true, "demo-admin-token"},
        {"Aktif olmayan bayi", "dealer", "Kemal Aydın", "05361000505", "aydin.zirai@ornek.com.tr",
         "Şanlıurfa", "Harran", "Gülay Sezer", "05301110022", false, ""},
    };
    return list;
}

const DemoAccount& demoAccount(const std::string& type, bool active) {
    for (const auto& account : demoAccounts())
        if (account.type == type && account.active == active) return account;
    throw std::out_of_range("no demo account of type " + type);
}

std::string demoAccountsText(bool withTokens) {
    std::string text;
    for (const auto& a : demoAccounts()) {
        text += a.role + " (" + a.type + "): " + a.fullname + ", " + a.phone;
        if (!a.active)
            text += ", hesap aktif değil";
        else if (withTokens)
            text += ", token: " + a.token;
        text += "\n";
    }
    return text;
}

namespace {

struct DemoShop {
    const char* phone;
    const char* dealerName;
    const char* taxNumber;
    const char* identityNumber;
};

const DemoShop DemoShops[] = {
    {"05421000303", "Erdem Tarım Zirai İlaç ve Tohumculuk", "4830127965", "38492017510"},
    {"05361000505", "Aydın Zirai Ürünler", "1209384756", "52746109318"},
};

// Shop data of the demo dealers; also for a database made before dealers had any.
void seedDemoShops(Database& db) {
    for (const auto& shop : DemoShops)
        db.execute("UPDATE users SET dealer_name = ?, tax_number = ?, tc_no = ?"
                   " WHERE phone = ? AND type = 'dealer' AND dealer_name IS NULL",
                   {std::string(shop.dealerName), std::string(shop.taxNumber),
                    std::string(shop.identityNumber), std::string(shop.phone)});
}

} // namespace

void seedDemoAccounts(Database& db) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM users") > 0) {
        seedDemoShops(db);
        return;
    }

    db.transaction([&] {
        for (const auto& a : demoAccounts()) {
            auto place = db.queryRow("SELECT c.id AS city_id, k.id AS county_id FROM cities c"
                                     " JOIN counties k ON k.city_id = c.id WHERE c.name = ? AND k.name = ?",
                                     {a.city, a.county});
            if (!place) throw std::runtime_error("demo account place not in region data: " + a.county);

            Json menu = Json::array();
            for (int code : defaultMenu(a.type))
                menu.push_back(code);

            db.execute("INSERT INTO users (phone, fullname, email, type, active, city_id, county_id,"
                       " region_fullname, region_phonenumber, menu, etk_answered)"
                       " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1)",
                       {a.phone, a.fullname, a.email ? SqlValue(*a.email) : SqlValue(nullptr), a.type,
                        std::int64_t(a.active ? 1 : 0), place->at("city_id").get<std::int64_t>(),
                        place->at("county_id").get<std::int64_t>(), a.regionFullname, a.regionPhonenumber,
                        menu.dump()});
        }
    });
    seedDemoShops(db);
}

void setDemoTokens(Database& db, bool on) {
    db.transaction([&] {
        for (const auto& a : demoAccounts()) {
            if (a.token.empty()) continue;
            if (!on) {
                db.execute("DELETE FROM tokens WHERE token = ?", {a.token});
                continue;
            }
            // Only for the demo account itself, should its phone have been taken over.
            const auto userId = db.scalar("SELECT id FROM users WHERE phone = ? AND type = ?", {a.phone, a.type});
            if (userId && !db.scalar("SELECT COUNT(*) FROM tokens WHERE token = ?", {a.token}))
                db.execute("INSERT INTO tokens (token, user_id) VALUES (?, ?)", {a.token, userId});
        }
    });
}

} // namespace ekinora::server::accounts
