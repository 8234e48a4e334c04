#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <string>

namespace ekinora::server::catalogue {

// The plant-protection catalogue's tables.
std::string schemaSql();
// Its groups, plants, illnesses, products and their uses; runs again without doubling anything.
std::string seedSql();

// `productCatalog/products`, `productCatalog/filters` and `productCatalog/product-detail` of the
// "product-catalog", for any signed-in account.
void registerCatalogueCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::catalogue
