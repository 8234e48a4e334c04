#include "ShellScreens.h"

#include "NavigationController.h"
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
}

} // namespace ekinora::shell
