#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"

#include <cstdint>
#include <string>

namespace ekinora::server::accounts {

// What is wrong with a dealer's shop data, in the order of the form: "dealerName", "taxNumber",
// "TCNo". A tax number held by another account than exceptUserId counts as taken.
envelope::FieldErrors dealerErrors(Database& db, const std::string& dealerName, const std::string& taxNumber,
                                   const std::string& identityNumber, std::int64_t exceptUserId = 0);

// `farmer/register`, `dealer/check-information-field` and `dealer/register`. A registration needs
// the hash of an SMS code verified within the registration window; it spends that hash.
void registerRegistrationCommands(Dispatch& dispatch, Database& db, Clock clock);

} // namespace ekinora::server::accounts
