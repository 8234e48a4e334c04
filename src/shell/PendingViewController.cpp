#include "PendingViewController.h"

#include "MenuItems.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"

namespace ekinora::shell {

using namespace platform;

PendingViewController::PendingViewController(const QString& identifier, const QString& title, bool leadsToLogin,
                                             QObject* parent)
    : ViewController(parent), storyboardIdentifier(identifier), m_leadsToLogin(leadsToLogin) {
    setTitle(title);
}

QUrl PendingViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/ekinora/shell/PendingView.qml")); }

void PendingViewController::viewDidAppear(bool) {
    if (!m_leadsToLogin || !service::LocalStore::userInfo().isUndefined()) return;
    auto* content = qobject_cast<NavigationController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    ViewController* login = Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("loginVC"));
    if (!content || !login) return;
    content->setViewControllers({login});
    if (auto* menu = sideMenuViewController()) {
        menu->setContentViewController(content, true);
        menu->hideMenuViewController();
    }
}

void registerPendingScreens() {
    for (const MenuItem& item : menuItems()) {
        if (Storyboard::contains(item.target)) continue;
        QString title = item.label;
        title.replace(NewMark, QString());
        const QString id = item.target;
        const bool home = id == QStringLiteral("firstViewController");
        Storyboard::registerIdentifier(id, [id, title, home] { return new PendingViewController(id, title, home); });
    }
}

} // namespace ekinora::shell
