#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <string>

namespace ekinora::server::sys {

// Path of the page that stands for the app's store entry.
inline const std::string StorePath = "/store/ekinora";

// `maintenance`, `popup` and `app/version`.
void registerCommands(Dispatch& dispatch, Database& db);

// The "/check" probe: a boolean "status" and a text "message", outside the envelope.
Json probeReply(Database& db);

// The store page: what the app is and which version is published.
std::string storePage(Database& db);

} // namespace ekinora::server::sys
