#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"
#include "core/Params.h"

#include <cstdint>
#include <string>

namespace ekinora::server::accounts {

struct DealerData {
    std::string name, taxNumber, identityNumber;
};

// A dealer's shop data, "dealerName", "taxNumber" and "TCNo", with what is wrong with it recorded in
// the order of the form. A tax number held by another account than exceptUserId counts as taken.
DealerData readDealer(Params& p, Database& db, std::int64_t exceptUserId = 0);

// `farmer/register`, `dealer/check-information-field` and `dealer/register`. A registration needs
// the hash of an SMS code verified within the registration window; it spends that hash.
void registerRegistrationCommands(Dispatch& dispatch, Database& db, Clock clock);

} // namespace ekinora::server::accounts
