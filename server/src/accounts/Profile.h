#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ekinora::server::accounts {

// The user record with "etkPopup": 1 while the account has not answered the three permissions,
// else 0. The app archives it as its stored record, so it keeps every member of a login reply.
std::optional<Json> profileRecord(Database& db, std::int64_t userId, const std::string& token);

// `farmer/profile`, `farmer/etk` and `farmer/update-profile`: each for the caller's own account,
// each answered with the profile record.
void registerProfileCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::accounts
