#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

namespace ekinora::server::farms {

// The crop kinds (each with a picture under /static/media/produces/) and the company's
// agricultural products, when their tables are empty.
void seedProduces(Database& db);

// `produces` and `produce/aps`: open lists, read before login too.
void registerProduceCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::farms
