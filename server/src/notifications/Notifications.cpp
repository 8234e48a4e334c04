#include "notifications/Notifications.h"

#include "accounts/DemoAccounts.h"
#include "core/Envelope.h"
#include "core/Params.h"

namespace ekinora::server::notifications {

namespace {

struct Seed {
    const char* type; // demo account it goes to
    const char* message;
    int hoursAgo;
    bool read;
};

// Oldest first, so that ids follow the dates as they do for notices made later.
const Seed DemoNotices[] = {
    {"farmer", "Bahar Bilgi Yarışması başladı! Soruları yanıtlayın, traktör çekilişine katılın.", 120, true},
    {"loyalty", "Manisa Alaşehir'de bağlarda mildiyö riski artıyor. Koruyucu ilaçlama zamanı yaklaştı.", 72,
     true},
    {"farmer", "Ziraat mühendisimiz \"Mısırda yaprak sararması\" konulu sorunuzu yanıtladı.", 50, true},
    {"loyalty", "Bereket Kulübü'ne özel bahar kampanyası: seçili ürünlerde puanlar bu ay iki katı.", 30,
     false},
    {"farmer",
     "Buğday tarlanızda sarı pas dönemi başladı. Hastalık belirtileri ve önerilen ilaçlama "
     "programı için ürün takviminize göz atınız.",
     26, false},
    {"loyalty", "Tebrikler! Son okuttuğunuz ürün kodlarıyla 150 Bereket puanı kazandınız.", 5, false},
    {"farmer",
     "Konya ve çevresinde önümüzdeki iki gün gece sıcaklıklarının -3 °C'ye düşmesi bekleniyor. "
     "Çiçeklenme dönemindeki bahçelerinizde don önlemlerini almayı unutmayınız.",
     3, false},
};

} // namespace

void notify(Database& db, std::int64_t userId, const std::string& message) {
    db.execute("INSERT INTO notifications (user_id, message) VALUES (?, ?)", {userId, message});
}

void seedDemoNotifications(Database& db) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM notifications") > 0) return;
    db.transaction([&] {
        for (const auto& notice : DemoNotices) {
            const auto userId =
                db.scalar("SELECT id FROM users WHERE phone = ?", {accounts::demoAccount(notice.type).phone});
            if (!userId) continue;
            db.execute("INSERT INTO notifications (user_id, message, read, created_at)"
                       " VALUES (?, ?, ?, strftime('%Y-%m-%d %H:%M:%S', 'now', ?))",
                       {userId, std::string(notice.message), std::int64_t(notice.read ? 1 : 0),
                        "-" + std::to_string(notice.hoursAgo) + " hours"});
        }
    });
}

Json list(Database& db, std::int64_t userId, bool markRead) {
    auto guard = db.lock();
    Json notices = db.query("SELECT id, message,"
                            " strftime('%d.%m.%Y %H:%M', created_at, 'localtime') AS date, read"
                            " FROM notifications WHERE user_id = ? ORDER BY id DESC LIMIT ?",
                            {userId, std::int64_t(ListLimit)});
    if (markRead && !notices.empty())
        db.execute("UPDATE notifications SET read = 1 WHERE user_id = ? AND read = 0 AND id <= ?",
                   {userId, notices.front().at("id").get<std::int64_t>()});
    const auto unread =
        db.scalar("SELECT COUNT(*) FROM notifications WHERE user_id = ? AND read = 0", {userId});
    return Json{{"notifications", std::move(notices)}, {"unreadCount", unread}};
}

namespace {

// "ignore_read" "0" marks what is listed as read; anything else leaves the marks alone.
Json notices(Database& db, const ApiCall& call) {
    return envelope::success(list(db, call.userId, Params(call).answer("ignore_read") == Answer::No));
}

} // namespace

// Every signed-in screen has the bell, whatever the role.
void registerNotificationCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("notifications", Access::Account, notices, db);
}

} // namespace ekinora::server::notifications
