#pragma once

#include "core/Database.h"

#include <optional>
#include <string>
#include <vector>

namespace ekinora::server::accounts {

// The accounts every fresh database starts with: one per role and a dealer the company has not
// activated yet. Active ones hold a fixed token so that authenticated commands can be tried
// without going through the SMS login.
struct DemoAccount {
    std::string role; // how the console names the role
    std::string type;
    std::string fullname;
    std::string phone;
    std::optional<std::string> email;
    std::string city;
    std::string county;
    std::string regionFullname;
    std::string regionPhonenumber;
    bool active = true;
    std::string token; // "" when none is issued
};

const std::vector<DemoAccount>& demoAccounts();
const DemoAccount& demoAccount(const std::string& type, bool active = true);

// One line per account: role, name, phone, and the token when the fixed tokens are on.
std::string demoAccountsText(bool withTokens);

// Inserts the demo accounts when the users table is empty, and gives the demo dealers their shop
// data (name, tax number, identity number) where they have none.
void seedDemoAccounts(Database& db);
// The fixed tokens of the active demo accounts: stored in demo mode, withdrawn otherwise, so that a
// database a demo made does not let them in once the service runs for real.
void setDemoTokens(Database& db, bool on);

} // namespace ekinora::server::accounts
