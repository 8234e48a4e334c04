#include "conversations/Unread.h"

#include "core/Envelope.h"

namespace ekinora::server::conversations {

std::int64_t unreadCount(Database& db, std::int64_t userId, const std::string& role) {
    if (allows(Access::FarmerSide, role))
        return db.scalar("SELECT COUNT(*) FROM messages m JOIN subjects s ON s.id = m.subject_id"
                         " WHERE s.user_id = ? AND m.sender_user_id <> ? AND m.read = 0",
                         {userId, userId});
    return db.scalar("SELECT COUNT(*) FROM messages m JOIN subjects s ON s.id = m.subject_id"
                     " WHERE m.sender_user_id = s.user_id AND m.read = 0");
}

namespace {

Json unread(Database& db, const ApiCall& call) {
    return envelope::success(Json{{"count", unreadCount(db, call.userId, call.role)}});
}

} // namespace

void registerUnreadCommand(Dispatch& dispatch, Database& db) {
    dispatch.add("subject/message/check", Access::Account, unread, db);
}

} // namespace ekinora::server::conversations
