#include "loyalty/Loyalty.h"

#include "core/Html.h"
#include "core/Params.h"
#include "loyalty/Replies.h"

#include <algorithm>
#include <cctype>
#include <ctime>
#include <random>

namespace ekinora::server::loyalty {

namespace {

struct Context {
    Database& db;
    Clock now;
};

// A web token opens the portal for a quarter of an hour: the app uses it at once.
constexpr std::int64_t WebTokenLife = 15 * 60;

std::string randomHex(int length, bool upper) {
    static thread_local std::mt19937_64 random{std::random_device{}()};
    const char* digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    std::string out;
    while (int(out.size()) < length) {
        const auto word = random();
        for (int shift = 0; shift < 64 && int(out.size()) < length; shift += 4)
            out.push_back(digits[(word >> shift) & 0xf]);
    }
    return out;
}

// "<b>" marks the part of a point text the app sets in bold.
std::string marked(const std::string& before, std::int64_t points, const std::string& after) {
    return before + "<b>" + std::to_string(points) + " puan</b>" + after;
}

Json scan(const Context& c, const ApiCall& call) {
    Params p(call);
    const std::string serial = p.trimmed("serialNumber");
    if (serial.empty()) return warning("serialNumber", "Lütfen ürün ambalajının üzerindeki kodu okutunuz.");

    Json reply;
    c.db.transaction([&] {
        const auto code = c.db.queryRow(
            "SELECT p.title, p.image_path, l.points, l.campaign_points, g.user_id AS credited_to, g.reason"
            " FROM package_codes c"
            " LEFT JOIN catalogue_products p ON p.id = c.product_id AND c.catalog = 'product-catalog'"
            " LEFT JOIN loyalty_products l ON l.product_id = p.id"
            " LEFT JOIN loyalty_ledger g ON g.serial = c.serial WHERE c.serial = ?",
            {serial});
        if (!code) {
            reply = warning("serialNumber", "Okuttuğunuz kod sistemimizde bulunamadı. Lütfen ambalajdaki kodu "
                                            "kontrol ederek tekrar deneyiniz.");
            return;
        }
        const Json& row = *code;
        if (row["title"].is_null()) {
            reply = warning("serialNumber", "Bu kod bir zirai ilaç ambalajına ait değil. Puan yalnızca zirai ilaç "
                                            "ambalajlarındaki kodlardan kazanılır.");
            return;
        }
        if (!row["credited_to"].is_null()) {
            const bool mine = row["credited_to"].get<std::int64_t>() == call.userId;
            const std::string reason = row["reason"];
            if (!mine)
                reply = warning("serialNumber", "Bu kod daha önce kullanılmış, puanı başka bir hesaba eklenmiştir.");
            else if (reason == "sale")
                reply = warning("serialNumber", "Bu ürünün puanı bayi satışında hesabınıza eklenmiştir.");
            else if (reason == "award")
                reply = warning("serialNumber", "Bu ürün size hediye edilmiştir; hediye ürünler puan kazandırmaz.");
            else
                reply = warning("serialNumber", "Bu kodu daha önce okuttunuz. Her kodun puanı bir kez kazanılır.");
            return;
        }
        const std::int64_t points = row["points"].is_null() ? 0 : row["points"].get<std::int64_t>();
        const std::int64_t campaign = row["campaign_points"].is_null() ? 0 : row["campaign_points"].get<std::int64_t>();
        if (points + campaign == 0) {
            reply = warning("serialNumber", "Bu ürün Bereket Kulübü puan kampanyası kapsamında değildir.");
            return;
        }
        c.db.execute("INSERT INTO loyalty_ledger (user_id, serial, reason, points, created_at) VALUES (?, ?, 'scan', ?, ?)",
                     {call.userId, serial, points + campaign, c.now()});
        reply = done(Json{{"name", row["title"]},
                          {"image", call.baseUrl + row["image_path"].get<std::string>()},
                          {"campaignPoint",
                           campaign ? Json(marked("Kampanyadan ", campaign, " kazandınız")) : Json(nullptr)},
                          {"purchasePoint", marked("Bu üründen ", points, " kazandınız")}},
                     "Kod başarıyla okundu. Toplam puanınız: " + std::to_string(balance(c.db, call.userId)));
    });
    return reply;
}

Json qrCode(const Context& c, const ApiCall& call) {
    auto guard = c.db.lock();
    auto row = c.db.queryRow("SELECT code FROM loyalty_qr_codes WHERE user_id = ?", {call.userId});
    if (!row) {
        c.db.execute("INSERT OR IGNORE INTO loyalty_qr_codes (user_id, code) VALUES (?, ?)",
                     {call.userId, "EKNQ" + randomHex(16, true)});
        row = c.db.queryRow("SELECT code FROM loyalty_qr_codes WHERE user_id = ?", {call.userId});
    }
    return envelope::success(Json{{"qrCode", row->at("code")}});
}

Json webviewToken(const Context& c, const ApiCall& call) {
    const std::int64_t now = c.now();
    const std::string token = randomHex(40, false);
    auto guard = c.db.lock();
    c.db.execute("DELETE FROM loyalty_web_tokens WHERE expires_at <= ?", {now});
    c.db.execute("INSERT INTO loyalty_web_tokens (token, user_id, expires_at) VALUES (?, ?, ?)",
                 {token, call.userId, now + WebTokenLife});
    return envelope::success(Json{{"webviewToken", token}});
}

// dd.MM.yyyy in Turkey's time (UTC+3 all year).
std::string date(std::int64_t seconds) {
    const std::time_t t = std::time_t(seconds + 3 * 3600);
    std::tm tm{};
    gmtime_r(&t, &tm);
    char text[16];
    std::strftime(text, sizeof text, "%d.%m.%Y", &tm);
    return text;
}

std::string page(const std::string& title, const std::string& body) {
    return "<!DOCTYPE html>\n<html lang=\"tr\"><head><meta charset=\"utf-8\">"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
           "<title>" + escapeHtml(title) + "</title><style>"
           "body{margin:0;font-family:-apple-system,Roboto,Arial,sans-serif;color:#333;background:#f4f6f1}"
           "header{background:linear-gradient(90deg,#0090c5,#78b930);color:#fff;padding:16px}"
           "header h1{margin:0;font-size:20px}main{padding:16px;max-width:560px;margin:auto}"
           ".card{background:#fff;border-radius:8px;padding:16px;margin-bottom:16px;box-shadow:0 1px 3px #0002}"
           ".balance{font-size:36px;font-weight:bold;color:#78b930}"
           "table{width:100%;border-collapse:collapse;font-size:14px}"
           "td{padding:8px 4px;border-bottom:1px solid #e6e6e6;vertical-align:top}"
           "td.points{text-align:right;white-space:nowrap;font-weight:bold;color:#78b930}"
           ".muted{color:#9b9b9b;font-size:12px}"
           "</style></head><body><header><h1>Bereket Kulübü</h1></header><main>" +
           body + "</main></body></html>\n";
}

PortalPage refusal(int status, const std::string& heading, const std::string& text) {
    return {status, page("Bereket Kulübü", "<div class=\"card\"><h2>" + escapeHtml(heading) + "</h2><p>" +
                                               escapeHtml(text) + "</p></div>")};
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char ch) { return char(std::tolower(ch)); });
    return text;
}

std::string historyLine(const Json& row) {
    const std::string reason = row["reason"];
    std::string what = reason == "scan" ? "Ürün kodu okutuldu" : reason == "sale" ? "Bayi satışı" : "Bayi hediyesi";
    if (!row["dealer"].is_null()) what += " · " + row["dealer"].get<std::string>();
    const std::int64_t points = row["points"];
    return "<tr><td>" + escapeHtml(plainName(row["title"].get<std::string>())) + "<br><span class=\"muted\">" +
           date(row["created_at"]) + " · " + escapeHtml(what) + "</span></td><td class=\"points\">" +
           (reason == "award" ? std::string("Hediye") : "+" + std::to_string(points)) + "</td></tr>";
}

} // namespace

std::int64_t balance(Database& db, std::int64_t userId) {
    return db.scalar("SELECT COALESCE(SUM(points), 0) FROM loyalty_ledger WHERE user_id = ?", {userId});
}

std::optional<PortalPage> portalPage(Database& db, const std::string& path, const std::string& token,
                                     std::int64_t now) {
    if (path != PortalPrefix && path.rfind(PortalPrefix + "/", 0) != 0) return std::nullopt;
    const std::string rest = lower(path.substr(PortalPrefix.size()));
    if (rest != "/login/index" && rest != "/login/index/")
        return refusal(404, "Sayfa bulunamadı",
                       "Aradığınız sayfa bulunamadı. Bereket Kulübü'ne uygulamadaki menüden giriniz.");
    if (token.empty())
        return refusal(401, "Giriş yapılamadı",
                       "Giriş bilgisi bulunamadı. Lütfen Bereket Kulübü'nü uygulamadaki menüden açınız.");

    auto guard = db.lock();
    const auto account = db.queryRow("SELECT u.id, u.fullname, w.expires_at FROM loyalty_web_tokens w"
                                     " JOIN users u ON u.id = w.user_id WHERE w.token = ? AND u.active = 1",
                                     {token});
    if (!account)
        return refusal(401, "Giriş yapılamadı",
                       "Bu bağlantı geçersiz. Lütfen Bereket Kulübü'nü uygulamadaki menüden yeniden açınız.");
    if ((*account)["expires_at"].get<std::int64_t>() <= now)
        return refusal(401, "Oturumun süresi doldu",
                       "Bu bağlantının süresi dolmuş. Lütfen Bereket Kulübü'nü uygulamadaki menüden yeniden açınız.");

    const std::int64_t userId = (*account)["id"];
    const Json history = db.query(
        "SELECT g.reason, g.points, g.created_at, COALESCE(p.title, c.serial) AS title, d.dealer_name AS dealer"
        " FROM loyalty_ledger g JOIN package_codes c ON c.serial = g.serial"
        " LEFT JOIN catalogue_products p ON p.id = c.product_id AND c.catalog = 'product-catalog'"
        " LEFT JOIN loyalty_transactions t ON t.id = g.transaction_id LEFT JOIN users d ON d.id = t.dealer_id"
        " WHERE g.user_id = ? ORDER BY g.created_at DESC, g.id DESC",
        {userId});
    std::string body = "<div class=\"card\"><p>Merhaba " + escapeHtml((*account)["fullname"].get<std::string>()) +
                       ",</p><p>Toplam puanınız</p><div class=\"balance\">" +
                       std::to_string(balance(db, userId)) + " puan</div></div><div class=\"card\"><h2>Puan geçmişi</h2>";
    if (history.empty()) {
        body += "<p>Henüz puan kazanmadınız. Ürün ambalajlarındaki kodları uygulamadan okutarak puan toplayabilirsiniz.</p>";
    } else {
        body += "<table>";
        for (const auto& row : history)
            body += historyLine(row);
        body += "</table>";
    }
    body += "</div>";
    return PortalPage{200, page("Bereket Kulübü", body)};
}

void registerLoyaltyCommands(Dispatch& dispatch, Database& db, Clock clock) {
    const Context context{db, clock ? clock : Clock(systemSeconds)};
    dispatch.add("agricultural-pesticide-code/scan", Access::FarmerSide, scan, context);
    dispatch.add("farmer/qr-code", Access::FarmerSide, qrCode, context);
    dispatch.add("webviewToken", Access::FarmerSide, webviewToken, context);
}

} // namespace ekinora::server::loyalty
