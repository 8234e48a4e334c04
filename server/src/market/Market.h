#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

#include <string>

namespace ekinora::server::market {

// The crops quoted by the two price sources ("H": the wholesale produce markets, "B": the commodity
// exchanges), their product groups, varieties and the cities that trade them; seeded when empty.
void seedMarket(Database& db);

// Seeds, then `agrivo/produces`, `produce/categories` and `agrivo/produce/details`, for any signed-in
// account.
void registerMarketCommands(Dispatch& dispatch, Database& db, Clock clock);

struct Quote {
    double min = 0;
    double max = 0;
    std::string updated; // "yyyy-MM-dd HH:mm:ss", Turkey's time
};

// The price of a variety in a city on a day (days since 1970-01-01 in Turkey): the same all day long,
// moving from one day to the next by a seasonal swing, a shorter wave and a small daily step.
Quote quoteOf(std::int64_t varietyId, double basePrice, const std::string& city, double cityFactor, std::int64_t day);

} // namespace ekinora::server::market
