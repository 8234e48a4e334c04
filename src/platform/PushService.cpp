#include "PushService.h"

#include <QTimer>

namespace ekinora::platform {

void PushService::registerUserNotificationSettings(int types) {
    QTimer::singleShot(0, this, [this, types] { emit didRegisterUserNotificationSettings(types); });
}

void PushService::registerForRemoteNotifications() {
    QTimer::singleShot(0, this, [this] {
        emit didFailToRegisterForRemoteNotificationsWithError(QStringLiteral("bu aygıtta anlık bildirim servisi yok"));
    });
}

} // namespace ekinora::platform
