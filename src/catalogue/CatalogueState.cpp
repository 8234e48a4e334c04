#include "CatalogueState.h"

namespace ekinora::catalogue {

#define PROCESS_WIDE(Type, name, ...)                                                                                  \
    Type& name() {                                                                                                     \
        static Type value{__VA_ARGS__};                                                                                \
        return value;                                                                                                  \
    }

PROCESS_WIDE(Product, productList)
PROCESS_WIDE(std::optional<FilteredProduct>, filteredProducts)
PROCESS_WIDE(std::optional<Filter>, filterReply)
PROCESS_WIDE(std::optional<MaizeProducts>, maizeProducts)
PROCESS_WIDE(QList<SprayElement>, sprayPrograms)
PROCESS_WIDE(std::optional<Json>, productDetailJSON)
PROCESS_WIDE(std::optional<Json>, maizeDetailJSON)
PROCESS_WIDE(std::optional<ProductDetail>, productDetailRecord)
PROCESS_WIDE(QString, transactionHash, QStringLiteral(""))

PROCESS_WIDE(std::optional<int>, selectedFilterKind)
PROCESS_WIDE(QString, selectedFilterId, QStringLiteral(""))
PROCESS_WIDE(QStringList, plantNames)
PROCESS_WIDE(QStringList, pgroupNames)
PROCESS_WIDE(QStringList, illnessNames)
PROCESS_WIDE(QStringList, plantIds)
PROCESS_WIDE(QStringList, pgroupIds)
PROCESS_WIDE(QStringList, illnessIds)
PROCESS_WIDE(QString, selectedPlantId, QStringLiteral(""))
PROCESS_WIDE(QString, selectedPgroupId, QStringLiteral(""))
PROCESS_WIDE(QString, selectedIllnessId, QStringLiteral(""))
PROCESS_WIDE(QString, selectedPlantName, QStringLiteral(""))
PROCESS_WIDE(QString, selectedPgroupName, QStringLiteral(""))
PROCESS_WIDE(QString, selectedIllnessName, QStringLiteral(""))
PROCESS_WIDE(QString, selectedProductId, QStringLiteral(""))

PROCESS_WIDE(QString, documentPath, QStringLiteral(""))
PROCESS_WIDE(QString, documentTitle, QStringLiteral(""))
PROCESS_WIDE(QString, sprayUrl, QStringLiteral(""))

} // namespace ekinora::catalogue
