#include "Bell.h"

#include "GetNotificationRequest.h"
#include "platform/Platform.h"
#include "platform/ViewController.h"
#include "widgets/BadgeBarButtonItem.h"

#include <QPointer>

namespace ekinora::notifications {

using namespace platform;

namespace {

// The bar button's connection to the list: the tap performs the segue on the screen that holds it.
class BellTap : public QObject {
    Q_OBJECT
public:
    explicit BellTap(ViewController* screen, QObject* parent) : QObject(parent), m_screen(screen) {}

public slots:
    void openNotifications(QObject* sender) {
        if (m_screen) m_screen->performSegueWithIdentifier(Bell::NotificationSegue, sender);
    }

private:
    QPointer<ViewController> m_screen;
};

} // namespace

widgets::BadgeBarButtonItem* Bell::install(ViewController* screen) {
    auto* item = new widgets::BadgeBarButtonItem(QStringLiteral("btnNotification"), screen);
    item->setImage(QStringLiteral("bell"));
    item->setTitle(QStringLiteral("Bildirimler"));
    item->addTarget(new BellTap(screen, item), QStringLiteral("openNotifications"));
    screen->setRightBarButtonItem(item);
    screen->addSegue(NotificationSegue, ViewController::SegueKind::Present, QStringLiteral("NotificationViewController"));
    return item;
}

void Bell::setNotifBadge(ViewController* screen) {
    GetNotificationRequest request;
    request.ignoreRead = QStringLiteral("1");
    auto self = strong(screen);
    request.getNotifications(
        [self](const Json& response) {
            const Json data = member(response, QStringLiteral("data"));
            if (data.isNull()) return;
            const int unread = intValue(member(data, QStringLiteral("unreadCount")));
            BarButtonItem* item = self->rightBarButtonItem();
            if (!item) return;
            item->setBadgeValue(unread < 1 ? QStringLiteral("") : stringWithFormat(QStringLiteral("%d"), {unread}));
        },
        [](const Json&) {});
}

void Bell::observe(ViewController* screen) {
    Platform::current().notificationCenter().addObserver(screen, QStringLiteral("setNotifBadge"), CheckNotifBadge);
}

} // namespace ekinora::notifications

#include "Bell.moc"
