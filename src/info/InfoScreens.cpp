#include "InfoScreens.h"

#include "InfoDetailViewController.h"
#include "InfoViewController.h"
#include "platform/Storyboard.h"
#include "site/SiteInfoViewController.h"

namespace ekinora::info {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("infoVC"), [] { return new InfoViewController; });
    Storyboard::registerIdentifier(QStringLiteral("InfoDetailViewController"), [] { return new InfoDetailViewController; });
    Storyboard::registerIdentifier(QStringLiteral("SiteInfoViewController"), [] { return new site::InfoViewController; });
}

} // namespace ekinora::info
