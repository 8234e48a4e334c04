#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ekinora::server::loyalty {

// Package codes, the points of each product and the campaign, the farmers' point ledger, their QR
// codes, the portal's web tokens and the dealers' sale and gift transactions.
std::string schemaSql();
// The points of the catalogue's products and the printed package codes; runs again without
// doubling anything.
std::string seedSql();

// How many package codes the seed prints.
inline constexpr int SeededCodes = 3000;
// The serial number printed on the n-th seeded package (1-based): 13 digits with an EAN-13 check
// digit, so that it prints as a retail barcode as well as a QR or Data Matrix code. The numbers
// are spread so that one package's number does not give away its neighbour's.
std::string serialNumber(int n);
// The last seeded codes belong to seed bags, not to plant-protection products.
inline constexpr int FirstSeedBagCode = 2981;

// The QR payloads of the demo farmer and the demo club member: fixed, so printed codes keep working.
inline const std::string DemoFarmerQr = "EKNQ4D1F7A2C9B3E5F60";
inline const std::string DemoLoyaltyQr = "EKNQ8B2E6D0A4C7F1E93";

// The demo journey: a few codes the demo farmer scanned, a few the demo dealer sold him, once.
void seedDemoLoyalty(Database& db, Clock clock);

// The farmer's scan, his QR code, the portal's web token (farmer side) and the dealer's sale and
// gift transactions (dealers).
void registerLoyaltyCommands(Dispatch& dispatch, Database& db, Clock clock);
void registerSaleCommands(Dispatch& dispatch, Database& db, Clock clock);

// The loyalty portal at "/loyalty": "/loyalty/Login/INdex?token=<web token>" shows the account's
// points and their history. nullopt for a path outside the portal.
struct PortalPage {
    int httpStatus;
    std::string html;
};
inline const std::string PortalPrefix = "/loyalty";
std::optional<PortalPage> portalPage(Database& db, const std::string& path, const std::string& token,
                                     std::int64_t now);

// The farmer's balance: the sum of his ledger.
std::int64_t balance(Database& db, std::int64_t userId);

} // namespace ekinora::server::loyalty
