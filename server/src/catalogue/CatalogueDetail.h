#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

#include <optional>
#include <string>

namespace ekinora::server::catalogue {

struct CatalogueDocument {
    std::string contentType;
    std::string body;
};

// The label and the safety sheet of a plant-protection product as PDFs, made when asked for, at
// "/documents/catalogue/<id>/etiket.pdf" and ".../guvenlik-bilgi-formu.pdf"; nullopt for any other path.
std::optional<CatalogueDocument> productDocument(Database& db, const std::string& path);
// The product site's spray programmes: the list at "/site/scripts/components/product_groups/page_166.php"
// and each programme's page at "/site/ilaclama-programlari/<slug>"; nullopt for any other path.
std::optional<CatalogueDocument> sprayDocument(const std::string& path);

// The documents and the media of a product's detail tree, addresses under baseUrl.
Json productDocuments(std::int64_t id, const std::string& baseUrl);
Json productMedia(std::int64_t id, const std::string& title, const std::string& picture, const std::string& baseUrl);

// `productCatalog/region-attendant`: the representative of the account's region.
void registerRegionAttendant(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::catalogue
