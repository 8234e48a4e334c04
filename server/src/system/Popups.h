#pragma once

#include "core/Database.h"

#include <string>

namespace ekinora::server::sys {

// The seeded campaign that setPopupActive switches on and off.
inline const std::string CampaignPopupCode = "bahar-kampanyasi";

// A campaign with banner and product box (active) and a plain notice (inactive), when the table
// is empty.
void seedPopups(Database& db);

// The switch for everybody.
void setPopupActive(Database& db, const std::string& code, bool on);
// The switch for one account, beside the switch for everybody: either one shows it. False when
// the popup or the account is unknown.
bool setPopupActiveFor(Database& db, const std::string& code, std::int64_t userId, bool on);

// The newest popup that is on for everybody or for this account (0: for everybody only), as the
// app reads it, or JSON null. Stored media paths are relative to the service ("/static/..."), and
// become absolute on baseUrl here.
Json currentPopup(Database& db, std::int64_t userId, const std::string& baseUrl);

} // namespace ekinora::server::sys
