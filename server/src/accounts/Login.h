#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

#include <functional>
#include <string>

namespace ekinora::server::accounts {

// Where a new SMS code goes: the service has no SMS gateway, so the console stands in for it.
using SmsSink = std::function<void(const std::string& phone, const std::string& code)>;

struct LoginOptions {
    Clock clock;     // empty: the system clock
    SmsSink sendSms; // empty: the code goes nowhere but the demo's reply
    bool demo = false; // the code in the reply of `sms/get` as well
};

// `sms/get`, `sms/check`, `farmer/login` and `farmer/logout`.
void registerLoginCommands(Dispatch& dispatch, Database& db, LoginOptions options);

} // namespace ekinora::server::accounts
