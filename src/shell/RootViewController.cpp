#include "RootViewController.h"

#include "service/LocalStore.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"

namespace ekinora::shell {

using namespace platform;

RootViewController::RootViewController(QObject* parent) : SideMenuViewController(parent) {}

namespace {
// A new content stack with one screen, or nothing while that screen does not exist.
ViewController* contentWith(const QString& identifier) {
    auto* content = qobject_cast<platform::NavigationController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    if (!content) return nullptr;
    if (ViewController* first = Storyboard::instantiateViewControllerWithIdentifier(identifier))
        content->setViewControllers({first});
    return content;
}
} // namespace

void RootViewController::awakeFromNib() {
    menuPreferredStatusBarStyle = 1;
    contentViewShadowColor = Qt::black;
    contentViewShadowOffset = 0;
    contentViewShadowOpacity = 0.6;
    contentViewShadowRadius = 12;
    contentViewShadowEnabled = true;

    setContentViewController(Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    setLeftMenuViewController(Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("leftMenuViewController")));

    const Json user = service::LocalStore::userInfo();
    if (!user.isUndefined()) {
        const Json type = member(user, QStringLiteral("type"));
        if (isString(type, QStringLiteral("dealer")) || isString(type, QStringLiteral("adminUser")))
            setContentViewController(contentWith(QStringLiteral("messageVC")));
        else if (isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty")))
            setContentViewController(contentWith(QStringLiteral("firstViewController")));
    }

    setBackgroundImage(QStringLiteral("hm-back"));
    setPanGestureEnabled(false);
}

} // namespace ekinora::shell
