#pragma once

#include "core/Database.h"

#include <optional>
#include <string>

namespace ekinora::server::farms {

struct Document {
    std::string contentType;
    std::string body;
};

// The documents of the crop calendar, made from its data when asked for: a period's PDF at
// "/documents/periods/<id>.pdf", and a pest's page on the product site at
// "/site/zirai-sorunlar/<slug>". nullopt for any other path or an unknown id or slug.
std::optional<Document> calendarDocument(Database& db, const std::string& path);

} // namespace ekinora::server::farms
