#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

namespace ekinora::server::regions {

// `region/cities` and `region/counties`.
void registerCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::regions
