#pragma once

// The catalogue's requests: plain classes with one operation each, GET only, straight to the transport.
// All but two send the stored token as a bearer header (and nowhere else); each writes its newest reply
// into its process-wide variable and hands the completion what it reads back from there.
//
// A screen learns of a failure only through a transport error of the list and detail classes. A reply
// that is not JSON, or JSON that does not fit its record, is printed and the completion never comes.

#include "CatalogueState.h"

#include <functional>
#include <memory>

namespace ekinora::catalogue {

using Error = std::optional<QString>;

class GetProductsRequest {
public:
    Json json = QJsonObject(); // kept, never used
    void getProducts(std::function<void(const Product&, const Error&)> completion);
};

class GetFilteredProductRequest {
public:
    Json json = QJsonObject();
    void getFilteredProducts(const QString& path, std::function<void(const std::optional<FilteredProduct>&, const Error&)> completion);
};

class GetFiltersRequest {
public:
    Json json = QJsonObject();
    // Its root is its own copy of the service's address, the same text as ServiceBase.
    void getFilters(const QString& path, std::function<void(const std::optional<Filter>&, const Error&)> completion);
};

class GetProducDetailRequest {
public:
    void getProductDetail(const QString& path, std::function<void(const std::optional<Json>&, const Error&)> completion);
};

class GetMaizeAllProduct {
public:
    void getMaizeProducts(const QString& path, std::function<void(const std::optional<MaizeProducts>&, const Error&)> completion);
};

class GetMaizeProductDetail {
public:
    void getMaizeProductDetail(const QString& path, std::function<void(const std::optional<Json>&, const Error&)> completion);
};

// The product site's spray programmes: no token. The completion gets the list and the same bytes as a
// tree; its error is always none.
class GetProgramsRequest {
public:
    Json json = QJsonObject();
    void getPrograms(std::function<void(const QList<SprayElement>&, const Json&, const Error&)> completion);
};

// The nearest representative: the service answers from the account behind the token; no coordinates.
class GetGpsSearchRequest {
public:
    std::shared_ptr<Json> json = std::make_shared<Json>(QJsonObject());
    void getRegionAttendant(std::function<void(const Json&, const Error&)> completion);
};

namespace paths {
inline const QString Products = QStringLiteral("/?do=productCatalog/products&catalog=product-catalog");
inline const QString Filters = QStringLiteral("/?do=productCatalog/filters&catalog=product-catalog");
inline const QString RegionAttendant = QStringLiteral("/?do=productCatalog/region-attendant&catalog=product-catalog");
inline const QString Programs = QStringLiteral("/scripts/components/product_groups/page_166.php");
} // namespace paths

} // namespace ekinora::catalogue
