#include "NewsScreens.h"

#include "NewsDetailViewController.h"
#include "NewsViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::news {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("newsVC"), [] { return new NewsViewController; });
    Storyboard::registerIdentifier(QStringLiteral("NewsDetailViewController"), [] { return new NewsDetailViewController; });
}

} // namespace ekinora::news
