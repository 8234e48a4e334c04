#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

namespace ekinora::server::events {

// The company's events (field days, dealer meetings, harvest festivals), dated around the first start
// so that some are past, one is under way and the rest are coming; inserted once. The demo farmer has
// said he attends the one under way.
void seedEvents(Database& db, const Clock& clock);

// "events" ("past", "ongoing", "coming", by the service's today), "event/detail" ("id": "event") and
// "event/join" ("id", "status" "1" attends, "0" declines; farmers and club members only). Answering
// the same way twice, or answering a past or unjoinable event, is refused and changes nothing.
void registerEventCommands(Dispatch& dispatch, Database& db, Clock clock);

} // namespace ekinora::server::events
