#include "PendingViewController.h"

#include "MenuItems.h"
#include "platform/Storyboard.h"

namespace ekinora::shell {

using namespace platform;

PendingViewController::PendingViewController(const QString& identifier, const QString& title, QObject* parent)
    : ViewController(parent), storyboardIdentifier(identifier) {
    setTitle(title);
}

QUrl PendingViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Shell/PendingView.qml")); }

void registerPendingScreens() {
    for (const MenuItem& item : menuItems()) {
        if (Storyboard::contains(item.target)) continue;
        QString title = item.label;
        title.replace(NewMark, QString());
        const QString id = item.target;
        Storyboard::registerIdentifier(id, [id, title] { return new PendingViewController(id, title); });
    }
}

} // namespace ekinora::shell
