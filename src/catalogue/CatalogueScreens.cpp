#include "CatalogueScreens.h"

#include "AllProductsViewController.h"
#include "DocumentViewers.h"
#include "HomeViewController.h"
#include "ProductDetailViewController.h"
#include "SelectedProductViewController.h"
#include "SprayProgramViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::catalogue {

void registerScreens() {
    using platform::Storyboard;
    // The menu sets the identifier's screen as the only one of a new navigation stack: the filter
    // screen is the stack's root.
    Storyboard::registerIdentifier(QStringLiteral("HomeSB"), [] { return new HomeViewController; });
    Storyboard::registerIdentifier(QStringLiteral("AllProductsSB"), [] { return new AllProductsViewController; });
    Storyboard::registerIdentifier(QStringLiteral("SelectedProductSB"), [] { return new SelectedProductViewController; });
    Storyboard::registerIdentifier(QStringLiteral("ProductDetailSB"), [] { return new ProductDetailViewController; });
    Storyboard::registerIdentifier(QStringLiteral("DocumentViewerSB"), [] { return new DocumentViewerViewController; });
    Storyboard::registerIdentifier(QStringLiteral("MaizeDocSB"), [] { return new MaizeDocumentViewController; });
    Storyboard::registerIdentifier(QStringLiteral("SprayProgramSB"), [] { return new SprayProgramViewController; });
    Storyboard::registerIdentifier(QStringLiteral("SprayProgramWebSB"), [] { return new SprayProgramWebViewController; });
}

} // namespace ekinora::catalogue
