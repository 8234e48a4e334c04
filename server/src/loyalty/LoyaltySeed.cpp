#include "loyalty/Loyalty.h"

#include "accounts/DemoAccounts.h"

#include <cstdio>
#include <iterator>
#include <vector>

namespace ekinora::server::loyalty {

namespace {

// Points of a plant-protection product: what a package earns, and the campaign's extra, if any.
// A product with no points is outside the club's programme.
struct ProductPoints {
    std::int64_t product;
    int points;
    int campaign; // 0: not in the campaign
};

// In the catalogue's order, so that the n-th package belongs to the n-th product, round the list.
const std::vector<ProductPoints>& productPoints() {
    static const std::vector<ProductPoints> list = {
        {1001, 40, 50}, {1002, 30, 0},  {1003, 25, 25}, {1004, 35, 0},  {1005, 20, 0},
        {1006, 30, 0},  {1007, 25, 0},  {1008, 35, 0},  {1009, 20, 0},  {1010, 30, 0},
        {1070, 45, 50}, {1071, 25, 0},  {1072, 50, 50}, {1073, 40, 0},  {1074, 30, 0},
        {1075, 20, 0},  {1076, 45, 25}, {1077, 35, 0},  {1078, 30, 0},  {1079, 40, 0},
        {1080, 25, 0},  {1081, 35, 0},  {1082, 40, 0},  {1083, 0, 0},   {1084, 0, 0},
    };
    return list;
}

// The maize seed bags that carry codes of their own.
const std::int64_t SeedBags[] = {5001, 5002, 5003, 5004, 5005};

// Demo packages: which seeded numbers the demo farmer scanned himself and which the demo dealer
// sold him. Their points are credited by the seed as the commands would.
constexpr int DemoScanned[] = {13, 14, 15};
constexpr int DemoSold[] = {16, 17, 18};
inline const std::string DemoSaleHash = "d3m0a1e5c0de0000000000000000a001";

} // namespace

std::string serialNumber(int n) {
    // A bijection of 0..10^9-1 (the factor is prime to 10), behind the company's prefix.
    const std::uint64_t spread = (std::uint64_t(n) * 387420489ULL + 104729ULL) % 1000000000ULL;
    char digits[16];
    std::snprintf(digits, sizeof digits, "869%09llu", static_cast<unsigned long long>(spread));
    int sum = 0;
    for (int i = 0; i < 12; ++i)
        sum += (digits[i] - '0') * (i % 2 ? 3 : 1);
    digits[12] = char('0' + (10 - sum % 10) % 10);
    digits[13] = 0;
    return digits;
}

std::string schemaSql() {
    return R"sql(
CREATE TABLE loyalty_products (
    product_id INTEGER PRIMARY KEY REFERENCES catalogue_products(id),
    points INTEGER NOT NULL CHECK (points >= 0),
    campaign_points INTEGER NOT NULL DEFAULT 0 CHECK (campaign_points >= 0)
);
CREATE TABLE loyalty_transactions (
    id INTEGER PRIMARY KEY,
    hash TEXT NOT NULL UNIQUE,
    dealer_id INTEGER NOT NULL REFERENCES users(id),
    farmer_id INTEGER NOT NULL REFERENCES users(id),
    type TEXT NOT NULL CHECK (type IN ('sales', 'award')),
    state TEXT NOT NULL DEFAULT 'open' CHECK (state IN ('open', 'confirmed', 'ended')),
    created_at BIGINT NOT NULL,
    closed_at BIGINT
);
CREATE UNIQUE INDEX loyalty_transactions_one_open ON loyalty_transactions(dealer_id) WHERE state = 'open';
-- A package: its product (a plant-protection product, or a seed bag of another catalogue), the open
-- transaction holding it, and the confirmed one that sold or gave it.
CREATE TABLE package_codes (
    serial TEXT PRIMARY KEY,
    catalog TEXT NOT NULL,
    product_id INTEGER NOT NULL,
    held_by INTEGER REFERENCES loyalty_transactions(id),
    sold_in INTEGER REFERENCES loyalty_transactions(id)
);
CREATE INDEX package_codes_held ON package_codes(held_by);
CREATE INDEX package_codes_sold ON package_codes(sold_in);
CREATE TABLE loyalty_transaction_codes (
    id INTEGER PRIMARY KEY,
    transaction_id INTEGER NOT NULL REFERENCES loyalty_transactions(id) ON DELETE CASCADE,
    serial TEXT NOT NULL REFERENCES package_codes(serial),
    UNIQUE (transaction_id, serial)
);
-- The farmer's points: one line per package at most, whoever credited it (his scan, a dealer's
-- sale, or a gift, which earns nothing).
CREATE TABLE loyalty_ledger (
    id INTEGER PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    serial TEXT NOT NULL UNIQUE REFERENCES package_codes(serial),
    reason TEXT NOT NULL CHECK (reason IN ('scan', 'sale', 'award')),
    points INTEGER NOT NULL,
    transaction_id INTEGER REFERENCES loyalty_transactions(id),
    created_at BIGINT NOT NULL
);
CREATE INDEX loyalty_ledger_user ON loyalty_ledger(user_id, created_at);
CREATE TABLE loyalty_qr_codes (
    user_id INTEGER PRIMARY KEY REFERENCES users(id) ON DELETE CASCADE,
    code TEXT NOT NULL UNIQUE
);
CREATE TABLE loyalty_web_tokens (
    token TEXT PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    expires_at BIGINT NOT NULL
);
)sql";
}

std::string seedSql() {
    std::string sql;
    const std::string ignore = " ON CONFLICT DO NOTHING;\n";
    for (const auto& p : productPoints())
        sql += "INSERT INTO loyalty_products (product_id, points, campaign_points) VALUES (" +
               std::to_string(p.product) + ", " + std::to_string(p.points) + ", " + std::to_string(p.campaign) +
               ")" + ignore;
    const auto& products = productPoints();
    for (int n = 1; n <= SeededCodes; ++n) {
        const bool seedBag = n >= FirstSeedBagCode;
        const std::int64_t product = seedBag ? SeedBags[(n - FirstSeedBagCode) % std::size(SeedBags)]
                                             : products[size_t(n - 1) % products.size()].product;
        sql += "INSERT INTO package_codes (serial, catalog, product_id) VALUES ('" + serialNumber(n) + "', '" +
               (seedBag ? "maize-catalog" : "product-catalog") + "', " + std::to_string(product) + ")" + ignore;
    }
    return sql;
}

void seedDemoLoyalty(Database& db, Clock clock) {
    const std::int64_t now = clock ? clock() : systemSeconds();
    constexpr std::int64_t Day = 24 * 3600;
    auto idOf = [&](const accounts::DemoAccount& a) { return db.scalar("SELECT id FROM users WHERE phone = ?", {a.phone}); };
    const std::int64_t farmer = idOf(accounts::demoAccount("farmer"));
    const std::int64_t member = idOf(accounts::demoAccount("loyalty"));
    const std::int64_t dealer = idOf(accounts::demoAccount("dealer"));
    if (!farmer || !dealer) return; // a database whose demo accounts were removed
    auto pointsOf = [&](const std::string& serial) {
        return db.scalar("SELECT l.points + l.campaign_points FROM package_codes c"
                         " JOIN loyalty_products l ON l.product_id = c.product_id WHERE c.serial = ?",
                         {serial});
    };
    db.transaction([&] {
        db.execute("INSERT OR IGNORE INTO loyalty_qr_codes (user_id, code) VALUES (?, ?)", {farmer, DemoFarmerQr});
        if (member)
            db.execute("INSERT OR IGNORE INTO loyalty_qr_codes (user_id, code) VALUES (?, ?)", {member, DemoLoyaltyQr});
        if (db.scalar("SELECT COUNT(*) FROM loyalty_transactions WHERE hash = ?", {DemoSaleHash})) return;

        std::int64_t at = now - 20 * Day;
        for (int n : DemoScanned) {
            const std::string serial = serialNumber(n);
            db.execute("INSERT OR IGNORE INTO loyalty_ledger (user_id, serial, reason, points, created_at)"
                       " VALUES (?, ?, 'scan', ?, ?)",
                       {farmer, serial, pointsOf(serial), at});
            at += 2 * Day;
        }
        db.execute("INSERT INTO loyalty_transactions (hash, dealer_id, farmer_id, type, state, created_at, closed_at)"
                   " VALUES (?, ?, ?, 'sales', 'confirmed', ?, ?)",
                   {DemoSaleHash, dealer, farmer, now - 7 * Day, now - 7 * Day + 600});
        const std::int64_t sale = db.lastInsertId();
        for (int n : DemoSold) {
            const std::string serial = serialNumber(n);
            db.execute("INSERT INTO loyalty_transaction_codes (transaction_id, serial) VALUES (?, ?)", {sale, serial});
            db.execute("UPDATE package_codes SET sold_in = ? WHERE serial = ?", {sale, serial});
            db.execute("INSERT OR IGNORE INTO loyalty_ledger (user_id, serial, reason, points, transaction_id, created_at)"
                       " VALUES (?, ?, 'sale', ?, ?, ?)",
                       {farmer, serial, pointsOf(serial), sale, now - 7 * Day + 600});
        }
    });
}

} // namespace ekinora::server::loyalty
