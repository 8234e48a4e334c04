#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <cstdint>

namespace ekinora::server::conversations {

// Unread messages waiting for the account: for the asking side (farmer, loyalty) the answers in
// its own subjects; for the answering side (dealer, adminUser) the askers' messages in all
// subjects.
std::int64_t unreadCount(Database& db, std::int64_t userId);

// `subject/message/check`: "data" {"count"}.
void registerUnreadCommand(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::conversations
