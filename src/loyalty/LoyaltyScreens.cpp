#include "LoyaltyScreens.h"

#include "EntryViewControllers.h"
#include "MyQrCodeViewController.h"
#include "ScanViewController.h"
#include "WebViewViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::loyalty {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("scanProductVC"), [] { return new ScanViewController; });
    Storyboard::registerIdentifier(QStringLiteral("MyQrCodeSB"), [] { return new MyQrCodeViewController; });
    Storyboard::registerIdentifier(QStringLiteral("barcodeVC"), [] { return new BarcodeViewController; });
    Storyboard::registerIdentifier(QStringLiteral("qrGiftVC"), [] { return new QrGiftViewController; });
    Storyboard::registerIdentifier(QStringLiteral("loyaltyVC"), [] { return new WebViewViewController; });
}

} // namespace ekinora::loyalty
