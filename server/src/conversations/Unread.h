#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <cstdint>
#include <string>

namespace ekinora::server::conversations {

// Unread messages waiting for the account of this role: for the asking side (farmer, loyalty) the
// answers in its own subjects; for the answering side (dealer, adminUser) the askers' messages in
// all subjects.
std::int64_t unreadCount(Database& db, std::int64_t userId, const std::string& role);

// `subject/message/check` for any signed-in account: "data" {"count"}.
void registerUnreadCommand(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::conversations
