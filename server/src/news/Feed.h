#pragma once

#include "core/Database.h"

#include <cstdint>
#include <functional>
#include <string>

namespace ekinora::server::feed {

// Rows of a feed from an offset, at most limit of them, newest first.
using Rows = std::function<Json(std::int64_t offset, std::int64_t limit)>;

// One page of a feed that the app pages with a bare "more" flag: it never says which page it wants,
// so each reader's place in each feed is kept here. The first page (more false) starts the reader at
// the top; each "more" hands the rows after the last ones handed and moves the place on. Past the end
// the page is empty and the place stays. A "more" from a reader with no place yet starts at the top.
Json page(Database& db, std::int64_t userId, const std::string& feed, bool more, std::int64_t pageSize,
          const Rows& rows);

} // namespace ekinora::server::feed
