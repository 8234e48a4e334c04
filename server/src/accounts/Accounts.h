#pragma once

#include "core/Auth.h"
#include "core/Database.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ekinora::server::accounts {

// Side-menu item codes an account of this type sees, in display order.
std::vector<int> defaultMenu(const std::string& type);

// The active account a token belongs to, with its role.
std::optional<Caller> userForToken(Database& db, const std::string& token);

// A fresh random token (64 hexadecimal digits) stored for the account.
std::string issueToken(Database& db, std::int64_t userId);

// The company's contact for the farmers of a city, by the city's longitude: the west, the middle
// and the east of the country each have one.
struct RegionalContact {
    std::string fullname;
    std::string phonenumber;
};
RegionalContact regionalContact(Database& db, std::int64_t cityId);

// The account as login-type replies carry it: "id", "fullname", "email", "phone", "type", "menu",
// "token", "location" {"city", "county", "region"}. nullopt for an unknown id.
std::optional<Json> userRecord(Database& db, std::int64_t userId, const std::string& token);

} // namespace ekinora::server::accounts
