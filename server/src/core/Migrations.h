#pragma once

#include "core/Database.h"

#include <vector>

namespace ekinora::server {

// The schema of the service, in the order it grew. A new feature appends the next number;
// a shipped entry is never edited, because file databases remember which ones they ran.
const std::vector<Migration>& migrations();

} // namespace ekinora::server
