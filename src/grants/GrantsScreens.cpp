#include "GrantsScreens.h"

#include "GrantDetailViewController.h"
#include "GrantDocDetailViewController.h"
#include "GrantViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::grants {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("grantVC"), [] { return new GrantViewController; });
    Storyboard::registerIdentifier(QStringLiteral("GrantDetailViewController"), [] { return new GrantDetailViewController; });
    Storyboard::registerIdentifier(QStringLiteral("GrantDocsViewController"), [] { return new GrantDocsViewController; });
    Storyboard::registerIdentifier(QStringLiteral("GrantDocDetailViewController"), [] { return new GrantDocDetailViewController; });
}

} // namespace ekinora::grants
