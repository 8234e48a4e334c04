#include "loyalty/Loyalty.h"

#include "core/Params.h"
#include "loyalty/Replies.h"

#include <random>

namespace ekinora::server::loyalty {

namespace {

struct Context {
    Database& db;
    Clock now;
};

const std::string NoOpenTransaction =
    "Açık bir işleminiz bulunmuyor. Lütfen önce çiftçinin QR kodunu okutunuz.";
const std::string UnknownTransaction = "İşlem bulunamadı. Lütfen çiftçinin QR kodunu yeniden okutunuz.";
const std::string ConfirmedTransaction = "Bu işlem daha önce onaylanmış.";
const std::string EndedTransaction = "Bu işlem sonlandırılmış. Lütfen çiftçinin QR kodunu yeniden okutunuz.";
const std::string UnknownCode = "Bu ürün kodu sistemimizde bulunamadı.";
const std::string NotOnList = "Bu ürün kodu listenizde bulunmuyor.";

std::string newHash() {
    static thread_local std::mt19937_64 random{std::random_device{}()};
    static const char digits[] = "0123456789abcdef";
    std::string hash;
    for (int i = 0; i < 2; ++i) {
        const auto word = random();
        for (int shift = 0; shift < 64; shift += 4)
            hash.push_back(digits[(word >> shift) & 0xf]);
    }
    return hash;
}

// The dealer's transaction that a command acts on: the one named by "hash", else (the app sends
// none on some calls) his open one. Only an open transaction of his own is returned; otherwise the
// warning to answer with. Called with the database locked.
struct Found {
    std::optional<Json> transaction;
    Json refusal;
};

Found openTransaction(Database& db, const ApiCall& call) {
    const Params p(call);
    const std::string hash = p.trimmed("hash");
    if (hash.empty()) {
        auto row = db.queryRow("SELECT id, hash, type, farmer_id FROM loyalty_transactions"
                               " WHERE dealer_id = ? AND state = 'open'",
                               {call.userId});
        if (!row) return {std::nullopt, warning("hash", NoOpenTransaction)};
        return {std::move(row), nullptr};
    }
    auto row = db.queryRow("SELECT id, hash, type, farmer_id, state FROM loyalty_transactions"
                           " WHERE hash = ? AND dealer_id = ?",
                           {hash, call.userId});
    if (!row) return {std::nullopt, warning("hash", UnknownTransaction)};
    const std::string state = (*row)["state"];
    if (state == "confirmed") return {std::nullopt, warning("hash", ConfirmedTransaction)};
    if (state == "ended") return {std::nullopt, warning("hash", EndedTransaction)};
    return {std::move(row), nullptr};
}

// Ends an open transaction without a sale: its codes are free again.
void release(Database& db, std::int64_t transactionId, std::int64_t now) {
    db.execute("UPDATE package_codes SET held_by = NULL WHERE held_by = ?", {transactionId});
    db.execute("UPDATE loyalty_transactions SET state = 'ended', closed_at = ? WHERE id = ? AND state = 'open'",
               {now, transactionId});
}

// A package with its product, if it is a plant-protection product, and whether its points went already.
std::optional<Json> package(Database& db, const std::string& serial) {
    return db.queryRow("SELECT c.serial, c.held_by, c.sold_in, p.title, p.image_path,"
                       " EXISTS (SELECT 1 FROM loyalty_ledger g WHERE g.serial = c.serial) AS credited"
                       " FROM package_codes c"
                       " LEFT JOIN catalogue_products p ON p.id = c.product_id AND c.catalog = 'product-catalog'"
                       " WHERE c.serial = ?",
                       {serial});
}

Json product(const Json& row, const ApiCall& call) {
    return Json{{"name", row["title"]}, {"image", call.baseUrl + row["image_path"].get<std::string>()}};
}

Json createTransaction(const Context& c, const ApiCall& call) {
    Params p(call);
    const std::string type = p.trimmed("type");
    const std::string qr = p.trimmed("qrCode");
    if (type != "sales" && type != "award")
        return warning("type", "İşlem türü belirlenemedi. Lütfen satış ya da hediye ekranından başlayınız.");
    if (qr.empty()) return warning("qrCode", "Lütfen çiftçinin QR kodunu okutunuz.");

    Json reply;
    c.db.transaction([&] {
        const auto farmer = c.db.queryRow("SELECT u.id, u.fullname FROM loyalty_qr_codes q JOIN users u ON u.id = q.user_id"
                                          " WHERE q.code = ? AND u.active = 1 AND u.type IN ('farmer', 'loyalty')",
                                          {qr});
        if (!farmer) {
            reply = warning("qrCode", "Geçersiz QR kodu. Lütfen çiftçinin uygulamadaki QR kodunu okutunuz.");
            return;
        }
        // One open transaction a dealer: a new one leaves the unfinished one behind.
        const std::int64_t now = c.now();
        if (auto open = c.db.queryRow("SELECT id FROM loyalty_transactions WHERE dealer_id = ? AND state = 'open'",
                                      {call.userId}))
            release(c.db, (*open)["id"], now);
        const std::string hash = newHash();
        c.db.execute("INSERT INTO loyalty_transactions (hash, dealer_id, farmer_id, type, created_at) VALUES (?, ?, ?, ?, ?)",
                     {hash, call.userId, (*farmer)["id"].get<std::int64_t>(), type, now});
        reply = done(Json{{"TransactionId", hash}},
                     "Çiftçi başarıyla okundu: " + (*farmer)["fullname"].get<std::string>());
    });
    return reply;
}

Json addCode(const Context& c, const ApiCall& call) {
    Params p(call);
    const std::string serial = p.trimmed("serialNumber");
    if (serial.empty()) return warning("serialNumber", "Lütfen ürün kodunu okutunuz.");
    Json reply;
    c.db.transaction([&] {
        auto found = openTransaction(c.db, call);
        if (!found.transaction) {
            reply = std::move(found.refusal);
            return;
        }
        const std::int64_t id = (*found.transaction)["id"];
        const auto code = package(c.db, serial);
        const auto refuse = [&](const std::string& text) { reply = warning("serialNumber", text); };
        if (!code) return refuse(UnknownCode);
        const Json& row = *code;
        if (row["title"].is_null()) return refuse("Bu kod bir zirai ilaç ambalajına ait değil.");
        if (row["held_by"] == id) return refuse("Bu ürün kodu zaten listenizde.");
        if (!row["sold_in"].is_null()) return refuse("Bu ürün daha önce satılmış.");
        if (row["credited"].get<std::int64_t>())
            return refuse("Bu ürünün kodu çiftçi tarafından okutulmuş, puanı kullanılmış.");
        if (!row["held_by"].is_null()) return refuse("Bu ürün kodu başka bir açık işlemde bulunuyor.");
        c.db.execute("UPDATE package_codes SET held_by = ? WHERE serial = ? AND held_by IS NULL AND sold_in IS NULL",
                     {id, serial});
        c.db.execute("INSERT INTO loyalty_transaction_codes (transaction_id, serial) VALUES (?, ?)", {id, serial});
        reply = done(product(row, call), "Ürün listeye eklendi.");
    });
    return reply;
}

// The product of a code on the open transaction's list, for the remover's card.
Json getCode(const Context& c, const ApiCall& call) {
    Params p(call);
    const std::string serial = p.trimmed("serialNumber");
    if (serial.empty()) return warning("serialNumber", "Lütfen ürün kodunu okutunuz.");
    auto guard = c.db.lock();
    auto found = openTransaction(c.db, call);
    if (!found.transaction) return found.refusal;
    const auto code = package(c.db, serial);
    if (!code) return warning("serialNumber", UnknownCode);
    if ((*code)["held_by"] != (*found.transaction)["id"]) return warning("serialNumber", NotOnList);
    return done(product(*code, call), "Ürün listenizde.");
}

Json deleteCode(const Context& c, const ApiCall& call) {
    Params p(call);
    const std::string serial = p.trimmed("serialNumber");
    if (serial.empty()) return warning("serialNumber", "Lütfen ürün kodunu okutunuz.");
    Json reply;
    c.db.transaction([&] {
        auto found = openTransaction(c.db, call);
        if (!found.transaction) {
            reply = std::move(found.refusal);
            return;
        }
        const std::int64_t id = (*found.transaction)["id"];
        if (!c.db.execute("UPDATE package_codes SET held_by = NULL WHERE serial = ? AND held_by = ?", {serial, id})) {
            reply = warning("serialNumber", NotOnList);
            return;
        }
        c.db.execute("DELETE FROM loyalty_transaction_codes WHERE transaction_id = ? AND serial = ?", {id, serial});
        reply = done(Json::object(), "Ürün listeden çıkarıldı.");
    });
    return reply;
}

Json deleteTransaction(const Context& c, const ApiCall& call) {
    Json reply;
    c.db.transaction([&] {
        auto found = openTransaction(c.db, call);
        if (!found.transaction) {
            reply = std::move(found.refusal);
            return;
        }
        release(c.db, (*found.transaction)["id"], c.now());
        reply = done(Json::object(), "İşlem sonlandırıldı.");
    });
    return reply;
}

Json listCodes(const Context& c, const ApiCall& call) {
    auto guard = c.db.lock();
    auto found = openTransaction(c.db, call);
    if (!found.transaction) return found.refusal;
    Json list = Json::array();
    for (const auto& row : c.db.query("SELECT t.id, p.title, p.image_path FROM loyalty_transaction_codes t"
                                      " JOIN package_codes c ON c.serial = t.serial"
                                      " JOIN catalogue_products p ON p.id = c.product_id"
                                      " WHERE t.transaction_id = ? ORDER BY t.id",
                                      {(*found.transaction)["id"].get<std::int64_t>()}))
        list.push_back(Json{{"id", row["id"]},
                            {"name", row["title"]},
                            {"image", call.baseUrl + row["image_path"].get<std::string>()}});
    return done(Json{{"transactionId", (*found.transaction)["hash"]}, {"list", std::move(list)}}, "");
}

// Sells (or gives) every package on the list to the farmer, at once: the farmer's points for a sale,
// a line in his history for a gift, each package once.
Json confirm(const Context& c, const ApiCall& call) {
    Json reply;
    c.db.transaction([&] {
        auto found = openTransaction(c.db, call);
        if (!found.transaction) {
            reply = std::move(found.refusal);
            return;
        }
        const Json& t = *found.transaction;
        const std::int64_t id = t["id"];
        const std::int64_t farmer = t["farmer_id"];
        const bool sale = t["type"] == "sales";
        const Json codes = c.db.query(
            "SELECT c.serial, COALESCE(l.points + l.campaign_points, 0) AS points FROM package_codes c"
            " LEFT JOIN loyalty_products l ON l.product_id = c.product_id AND c.catalog = 'product-catalog'"
            " WHERE c.held_by = ?",
            {id});
        if (codes.empty()) {
            reply = warning("hash", "Listede hiç ürün yok. Lütfen ürün ekleyin");
            return;
        }
        const std::int64_t now = c.now();
        c.db.execute("UPDATE loyalty_transactions SET state = 'confirmed', closed_at = ? WHERE id = ? AND state = 'open'",
                     {now, id});
        std::int64_t credited = 0;
        for (const auto& code : codes) {
            const std::string serial = code["serial"];
            const std::int64_t points = sale ? code["points"].get<std::int64_t>() : 0;
            c.db.execute("UPDATE package_codes SET held_by = NULL, sold_in = ? WHERE serial = ?", {id, serial});
            if (c.db.execute("INSERT OR IGNORE INTO loyalty_ledger (user_id, serial, reason, points, transaction_id, created_at)"
                             " VALUES (?, ?, ?, ?, ?, ?)",
                             {farmer, serial, std::string(sale ? "sale" : "award"), points, id, now}))
                credited += points;
        }
        reply = done(Json{{"transactionId", t["hash"]}, {"points", credited}},
                     sale ? "Satış onaylandı. Çiftçinin hesabına " + std::to_string(credited) + " puan eklendi."
                          : "Hediye onaylandı. " + std::to_string(codes.size()) +
                                " ürün çiftçiye hediye olarak kaydedildi.");
    });
    return reply;
}

} // namespace

void registerSaleCommands(Dispatch& dispatch, Database& db, Clock clock) {
    const Context context{db, clock ? clock : Clock(systemSeconds)};
    dispatch.add("dealer/create-transaction", Access::Dealer, createTransaction, context);
    dispatch.add("dealer/add-agricultural-pesticide-code", Access::Dealer, addCode, context);
    dispatch.add("dealer/get-agricultural-pesticide-code", Access::Dealer, getCode, context);
    dispatch.add("dealer/delete-agricultural-pesticide-code", Access::Dealer, deleteCode, context);
    dispatch.add("dealer/delete-transaction", Access::Dealer, deleteTransaction, context);
    dispatch.add("dealer/agricultural-pesticide-list", Access::Dealer, listCodes, context);
    dispatch.add("dealer/confirm-agricultural-pesticide", Access::Dealer, confirm, context);
}

} // namespace ekinora::server::loyalty
