#include "system/Popups.h"

namespace ekinora::server::sys {

namespace {

std::string absolute(const std::string& path, const std::string& baseUrl) {
    if (!path.empty() && path.front() == '/') return baseUrl + path;
    return path;
}

} // namespace

void seedPopups(Database& db) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM popups") > 0) return;
    db.transaction([&] {
        db.execute(
            "INSERT INTO popups (code, header, content, file_path, pest_id, pest_file_path, pest_name, "
            "active)"
            " VALUES (?, ?, ?, ?, ?, ?, ?, 1)",
            {CampaignPopupCode, "Bahar Kampanyası Başladı!",
             "<p>Mart ve nisan aylarında bayilerimizden alacağınız <b>Tarvenza<sup>&reg;</sup> 250 EC</b> "
             "ürünlerinde her kutu için <b>iki kat Bereket puanı</b> kazanın.</p>"
             "<p>Kutunun içindeki kodu <i>Ürün Tarat</i> ekranından okutmanız yeterli. "
             "Kampanya 30 Nisan'a kadar geçerlidir.</p>",
             "/static/media/popup/bahar-kampanyasi.svg", std::int64_t(51),
             "/static/media/popup/tarvenza-250-ec.svg", "Tarvenza<sup>&reg;</sup> 250 EC"});
        db.execute(
            "INSERT INTO popups (code, header, content, file_path, pest_id, pest_file_path, pest_name, "
            "active)"
            " VALUES (?, ?, ?, '', NULL, '', '', 0)",
            {"hasat-hatirlatma", "Hasat Dönemi Hatırlatması",
             "<p>Son ilaçlama ile hasat arasındaki bekleme süresine uymayı unutmayınız.</p>"
             "<p>Sorularınızı <b>Mesajlarım</b> bölümünden ziraat mühendislerimize iletebilirsiniz.</p>"});
    });
}

void setPopupActive(Database& db, const std::string& code, bool on) {
    db.execute("UPDATE popups SET active = ? WHERE code = ?", {std::int64_t(on ? 1 : 0), code});
}

bool setPopupActiveFor(Database& db, const std::string& code, std::int64_t userId, bool on) {
    auto guard = db.lock();
    auto popup = db.queryRow("SELECT id FROM popups WHERE code = ?", {code});
    if (!popup || db.scalar("SELECT COUNT(*) FROM users WHERE id = ?", {userId}) == 0) return false;
    const auto popupId = popup->at("id").get<std::int64_t>();
    if (on)
        db.execute("INSERT OR IGNORE INTO user_popups (popup_id, user_id) VALUES (?, ?)", {popupId, userId});
    else
        db.execute("DELETE FROM user_popups WHERE popup_id = ? AND user_id = ?", {popupId, userId});
    return true;
}

Json currentPopup(Database& db, std::int64_t userId, const std::string& baseUrl) {
    auto row = db.queryRow(
        "SELECT id, header, content, file_path, pest_id, pest_file_path, pest_name FROM popups p"
        " WHERE active = 1 OR EXISTS (SELECT 1 FROM user_popups u WHERE u.popup_id = p.id AND u.user_id = ?)"
        " ORDER BY id DESC LIMIT 1",
        {userId});
    if (!row) return nullptr;
    Json popup = *row;
    popup["file_path"] = absolute(popup["file_path"].get<std::string>(), baseUrl);
    popup["pest_file_path"] = absolute(popup["pest_file_path"].get<std::string>(), baseUrl);
    return popup;
}

} // namespace ekinora::server::sys
