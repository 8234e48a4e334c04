#include "ServiceRoots.h"

namespace ekinora::service {

namespace {
const QString DefaultHost = QStringLiteral("http://127.0.0.1:8470");
}

QString Roots::ServiceBase = DefaultHost + QStringLiteral("/api");
QString Roots::ServiceRoot = DefaultHost;
QString Roots::ProductSiteBase = DefaultHost + QStringLiteral("/site");
QString Roots::LegacyWeatherBase = DefaultHost + QStringLiteral("/legacy-weather");
QString Roots::LoyaltyPortalBase = DefaultHost + QStringLiteral("/loyalty");
QString Roots::StoreAppURL = DefaultHost + QStringLiteral("/store/ekinora");
QString Roots::TagContainerBase = DefaultHost + QStringLiteral("/tags");

void Roots::configure(const QString& serviceBase) {
    QString host = serviceBase.trimmed();
    while (host.endsWith(u'/')) host.chop(1);
    if (host.endsWith(QStringLiteral("/api"))) host.chop(4);
    ServiceBase = host + QStringLiteral("/api");
    ServiceRoot = host;
    ProductSiteBase = host + QStringLiteral("/site");
    LegacyWeatherBase = host + QStringLiteral("/legacy-weather");
    LoyaltyPortalBase = host + QStringLiteral("/loyalty");
    StoreAppURL = host + QStringLiteral("/store/ekinora");
    TagContainerBase = host + QStringLiteral("/tags");
}

} // namespace ekinora::service
