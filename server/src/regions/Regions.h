#pragma once

#include "core/Database.h"

#include <string>

namespace ekinora::server::regions {

// Fills cities and counties from turkey-regions.json in dataDir when the cities table is empty.
// Cities keep the file's ids; counties are numbered 1, 2, ... in the file's order.
void seed(Database& db, const std::string& dataDir);

} // namespace ekinora::server::regions
