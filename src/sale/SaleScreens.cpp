#include "SaleScreens.h"

#include "BarcodeScanProductViewController.h"
#include "ProductListViewController.h"
#include "ProductsListEraseViewController.h"
#include "QRScanViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::sale {

void registerScreens() {
    using platform::Storyboard;
    // The entry screens of a sale and of a gift present the farmer's reading by this identifier.
    Storyboard::registerIdentifier(QStringLiteral("QRScanViewController"), [] { return new QRScanViewController; });
    Storyboard::registerIdentifier(QStringLiteral("BarcodeScanProductViewController"), [] { return new BarcodeScanProductViewController; });
    Storyboard::registerIdentifier(QStringLiteral("ProductListViewController"), [] { return new ProductListViewController; });
    Storyboard::registerIdentifier(QStringLiteral("ProductsListEraseViewController"), [] { return new ProductsListEraseViewController; });
}

} // namespace ekinora::sale
