#pragma once

#include <string_view>

namespace ekinora::server {

// Who may send a command. A signed-in account's role is its "type": "farmer", "loyalty" (a club
// member), "dealer" or "adminUser" (the company's staff).
enum class Access {
    Public,     // anybody: a token, if sent, is not looked at
    Account,    // any signed-in account
    FarmerSide, // farmers and club members: the accounts that keep farms
    Dealer,     // dealers
    Staff,      // the company's staff
};

inline bool allows(Access access, std::string_view role) {
    switch (access) {
    case Access::Public:
    case Access::Account:
        return true;
    case Access::FarmerSide:
        return role == "farmer" || role == "loyalty";
    case Access::Dealer:
        return role == "dealer";
    case Access::Staff:
        return role == "adminUser";
    }
    return false;
}

} // namespace ekinora::server
