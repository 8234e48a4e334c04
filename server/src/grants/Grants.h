#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

#include <optional>
#include <string>

namespace ekinora::server::grants {

// The support programmes, bound to provinces (or single counties) and crops, with their application
// documents; seeded when their table is empty. A programme bound to no place runs in every province,
// one bound to no crop covers every crop.
void seedGrants(Database& db);

// Seeds, then `agrivo/grants`: the programmes of one county and crop, for any signed-in account.
void registerGrantCommands(Dispatch& dispatch, Database& db, Clock clock);

struct GrantDocument {
    std::string contentType;
    std::string body;
};

// An application document as a PDF at "/documents/grants/<id>.pdf", made when asked for; nullopt for
// any other path or an unknown id.
std::optional<GrantDocument> grantDocument(Database& db, const std::string& path, const Clock& clock);

// The last day to apply: the programme's day of the year, this year or, once passed in Turkey, the next.
std::string endDateText(int month, int day, std::int64_t nowSeconds);

} // namespace ekinora::server::grants
