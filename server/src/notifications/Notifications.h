#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <cstdint>
#include <string>

namespace ekinora::server::notifications {

// Adds an unread notice for the account.
void notify(Database& db, std::int64_t userId, const std::string& message);

// A few notices, some read, for the demo farmer and the demo club member, when there are none yet.
void seedDemoNotifications(Database& db);

// The account's notices, newest first (at most ListLimit): "data" {"notifications": [{"id",
// "message", "date" ("dd.MM.yyyy HH:mm", local time), "read" (0 or 1, as before this call)}],
// "unreadCount"}. With markRead the listed notices and every older one become read, and
// "unreadCount" counts what is left.
inline constexpr int ListLimit = 100;
Json list(Database& db, std::int64_t userId, bool markRead);

// `notifications`: "ignore_read" "0" marks what it lists as read; "1" (the badge's count), or
// no value, leaves the marks alone.
void registerNotificationCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::notifications
