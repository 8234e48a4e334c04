#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include "catalogue/CatalogueDetail.h"

#include <string>

namespace ekinora::server::seeds {

// The maize and canola seed ranges: hybrids with their group, maturity, yield, traits and regions.
std::string schemaSql();
// The hybrids of both ranges; runs again without doubling anything.
std::string seedSql();

bool isSeedCatalog(const std::string& catalog);
// The list of "maize-catalog" (optionally one product group by "pgroup") or "canola-catalog".
Json products(Database& db, const ApiCall& call);
// One hybrid's tree: maize sections of pictures and cards, canola sections of paragraph and headline
// pairs after a first section whose first block is the picture.
Json productDetail(Database& db, const ApiCall& call);
// A hybrid's brochure as a PDF at "/documents/seeds/<id>/brosur.pdf"; nullopt for any other path.
std::optional<catalogue::CatalogueDocument> seedDocument(Database& db, const std::string& path);

} // namespace ekinora::server::seeds
