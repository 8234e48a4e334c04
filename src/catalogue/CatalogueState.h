#pragma once

// The catalogue's process-wide variables, in one place. Each is made once, empty, on its first use and
// lives as long as the process: the screens read their rows from here rather than from a request's
// completion, and the filter's choice reaches the result list through here, not through a segue.

#include "CatalogueRecords.h"

#include <QStringList>
#include <optional>

namespace ekinora::catalogue {

// The newest replies. Only the request that the name belongs to writes one, except where a screen
// clears it before asking.
Product& productList();                               // getProducts; cleared by the full list's fetch
std::optional<FilteredProduct>& filteredProducts();   // getFilteredProducts
std::optional<Filter>& filterReply();                 // getFilters
std::optional<MaizeProducts>& maizeProducts();        // getMaizeProducts
QList<SprayElement>& sprayPrograms();                 // getPrograms
std::optional<Json>& productDetailJSON();             // getProductDetail
std::optional<Json>& maizeDetailJSON();               // getMaizeProductDetail
std::optional<ProductDetail>& productDetailRecord();  // never filled; the detail screen clears it

// The text of the dealer's open sale that the full list's request reads (and never sends).
QString& transactionHash();

// The filter's choice and the lists of its panel.
std::optional<int>& selectedFilterKind(); // 1 plants, 2 product groups, 3 illnesses
QString& selectedFilterId();
QStringList& plantNames();
QStringList& pgroupNames();
QStringList& illnessNames();
// Only ever appended to, so they fall out of step with the names after the first refill; a row takes
// the id at its position all the same.
QStringList& plantIds();
QStringList& pgroupIds();
QStringList& illnessIds();
QString& selectedPlantId();
QString& selectedPgroupId();
QString& selectedIllnessId();
QString& selectedPlantName();
QString& selectedPgroupName();
QString& selectedIllnessName();

// The product whose detail opens next.
QString& selectedProductId();

// The document the viewer opens next; the spray programme page reuses the path for its title.
QString& documentPath();
QString& documentTitle();
// The spray programme page the web screen opens next.
QString& sprayUrl();

} // namespace ekinora::catalogue
