#pragma once

#include "core/Database.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ekinora::server::farms {

// The pest groups the calendar screen sorts into its two fixed lists; every other group is a
// disease group.
inline const std::string WeedsGroup = "Yabancı Otlar";
inline const std::string CreaturesGroup = "Zararlı Canlılar";

// Each crop's growing periods with their pests, the pests' products, the farm pictures and which
// crops keep period documents. Runs once, on a database whose calendar is still empty, and gives
// the demo farmer and the demo club member their farms in the same step, so a farm they delete
// stays deleted.
void seedCalendar(Database& db);

// The period a new farm of this crop starts in: the one whose season holds the month (1 to 12).
// nullopt for a crop without periods.
std::optional<std::int64_t> seasonalPeriod(Database& db, std::int64_t produceId, int month);

// A crop's periods in growing order: [{"id", "name", "image"}].
Json cropPeriods(Database& db, std::int64_t produceId, const std::string& baseUrl);

// The pests of one period in groups: [{"name", "data": [{"id", "name", "image", "path", "aps":
// [{"id", "name", "image"}]}]}]. Weeds first, then harmful creatures, then the disease groups in
// the order their first pest comes; a group without pests is left out. "path" is the pest's page
// on the product site, below ProductSitePrefix.
Json pestGroups(Database& db, std::int64_t periodId, const std::string& baseUrl);

// Where the product site's pages live on this service.
inline const std::string ProductSitePrefix = "/site";
// The product site's page of a pest, below ProductSitePrefix.
std::string pestPagePath(const std::string& slug);
// The picture of a product of the `aps` table.
std::string productPicturePath(std::int64_t productId);
// The document of a period, in PDF.
std::string periodDocumentPath(std::int64_t periodId);

// The month (1 to 12) in Turkey at this time; crops' seasons follow it.
int monthInTurkey(std::int64_t epochSeconds);

} // namespace ekinora::server::farms
