#include "MarketScreens.h"

#include "FarmingStockViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::market {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("farmingStockVC"), [] { return new FarmingStockViewController; });
    Storyboard::registerIdentifier(QStringLiteral("FSDetailViewController"), [] { return new FSDetailViewController; });
}

} // namespace ekinora::market
