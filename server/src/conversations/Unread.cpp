#include "conversations/Unread.h"

#include "core/Envelope.h"

namespace ekinora::server::conversations {

std::int64_t unreadCount(Database& db, std::int64_t userId) {
    auto user = db.queryRow("SELECT type FROM users WHERE id = ?", {userId});
    if (!user) return 0;
    const auto type = user->at("type").get<std::string>();
    if (type == "farmer" || type == "loyalty")
        return db.scalar("SELECT COUNT(*) FROM messages m JOIN subjects s ON s.id = m.subject_id"
                         " WHERE s.user_id = ? AND m.sender_user_id <> ? AND m.read = 0",
                         {userId, userId});
    return db.scalar("SELECT COUNT(*) FROM messages m JOIN subjects s ON s.id = m.subject_id"
                     " WHERE m.sender_user_id = s.user_id AND m.read = 0");
}

void registerUnreadCommand(Dispatch& dispatch, Database& db) {
    dispatch.add("subject/message/check", true, [&db](const ApiCall& call) {
        return envelope::success(Json{{"count", unreadCount(db, call.userId)}});
    });
}

} // namespace ekinora::server::conversations
