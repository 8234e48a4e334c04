#pragma once

#include <QString>

namespace ekinora::service {

// The fixed addresses of the application. They default to the reference service on this machine; the
// desktop's --service-base option moves them all to another host.
struct Roots {
    static QString ServiceBase;       // the command endpoint, ending in "/api"
    static QString ServiceRoot;       // the same host without "/api": "/check", "/omr/upload/", media
    static QString ProductSiteBase;   // the product site's pages and lists
    static QString LegacyWeatherBase; // the older weather endpoint
    static QString LoyaltyPortalBase; // the loyalty club's web portal
    static QString StoreAppURL;       // the store page the update prompt opens
    static QString TagContainerBase;  // the tag container download

    // Accepts the host ("http://host:port") or the command endpoint ("http://host:port/api").
    static void configure(const QString& serviceBase);
};

} // namespace ekinora::service
