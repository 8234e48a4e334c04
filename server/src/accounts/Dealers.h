#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <string>

namespace ekinora::server::accounts {

enum class Activation { Activated, AlreadyActive, NotFound };

// Opens a registered dealer's account (the company's approval). The dealer finds a notice about it
// after his first login. NotFound for a phone without a dealer account.
Activation activateDealer(Database& db, const std::string& phone);

// `dealer/information` and `dealer/update-information` for the caller's own shop;
// `admin/pending-dealers` and `admin/activate-dealer` for staff (type "adminUser") only.
void registerDealerCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::accounts
