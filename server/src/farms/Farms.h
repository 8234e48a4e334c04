#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace ekinora::server::farms {

inline constexpr int MaxFarms = 3;
inline constexpr int MaxProducts = 3;
inline constexpr double MaxSizeDekar = 10000;

// A farm as a client sends it, read and checked.
struct FarmInput {
    std::int64_t produceId = 0;
    double size = 0;                    // dekar
    std::vector<std::int64_t> products; // `aps` ids, without repeats, in the order sent
};

// Stores a new farm of the account, in the period the crop is in during this month (1 to 12).
// Returns its id.
std::int64_t createFarm(Database& db, std::int64_t userId, const FarmInput& farm, int month);

// The farm record of the farm lists: "id", "name", "range", "aps", "image", "period",
// "period_pdf", "periodId", "produceId", "produce".
Json farmRecords(Database& db, std::int64_t userId, const std::string& baseUrl);

// `farmer/produces`, `produce/set`, `produce/delete`, `produce/periods`, `produce/set-period`:
// for the farmer side, each account reaching only its own farms.
void registerFarmCommands(Dispatch& dispatch, Database& db, Clock clock);

} // namespace ekinora::server::farms
