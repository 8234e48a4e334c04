#include "CalendarScreens.h"

#include "DocumentViewController.h"
#include "ProductDetailViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::farms {

void registerCalendarScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("ProductDetailViewController"), [] { return new ProductDetailViewController; });
    Storyboard::registerIdentifier(QStringLiteral("DocumentViewController"), [] { return new DocumentViewController; });
    Storyboard::registerIdentifier(QStringLiteral("ProductViewController"), [] { return new ProductViewController; });
}

} // namespace ekinora::farms
