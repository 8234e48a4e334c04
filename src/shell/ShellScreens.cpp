#include "ShellScreens.h"

#include "NavigationController.h"
#include "PopupViewController.h"
#include "RootViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::shell {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("RootViewController"), [] {
        auto* root = new RootViewController;
        root->awakeFromNib();
        return root;
    });
    Storyboard::registerIdentifier(QStringLiteral("contentViewController"), [] { return new NavigationController; });
    // Made in code by the popup poll.
    Storyboard::registerIdentifier(QStringLiteral("PopupViewController"), [] { return new PopupViewController; });
}

} // namespace ekinora::shell
