#include "ShellScreens.h"

#include "LeftMenuViewController.h"
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
    // The content stack starts on the home screen.
    Storyboard::registerIdentifier(QStringLiteral("contentViewController"), [] {
        auto* content = new NavigationController;
        if (auto* home = Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("firstViewController")))
            content->setViewControllers({home});
        return content;
    });
    Storyboard::registerIdentifier(QStringLiteral("leftMenuViewController"), [] { return new LeftMenuViewController; });
    // Made in code by the popup poll.
    Storyboard::registerIdentifier(QStringLiteral("PopupViewController"), [] { return new PopupViewController; });
}

} // namespace ekinora::shell
