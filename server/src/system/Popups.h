#pragma once

#include "core/Database.h"

#include <string>

namespace ekinora::server::sys {

// The seeded campaign that setPopupActive switches on and off.
inline const std::string CampaignPopupCode = "bahar-kampanyasi";

// A campaign with banner and product box (active) and a plain notice (inactive), when the table
// is empty.
void seedPopups(Database& db);

void setPopupActive(Database& db, const std::string& code, bool on);

// The newest active popup as the app reads it, or JSON null. Stored media paths are relative to
// the service ("/static/..."), and become absolute on baseUrl here.
Json currentPopup(Database& db, const std::string& baseUrl);

} // namespace ekinora::server::sys
