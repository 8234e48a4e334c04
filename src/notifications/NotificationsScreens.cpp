#include "NotificationsScreens.h"

#include "NotificationViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::notifications {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("NotificationViewController"),
                                             [] { return new NotificationViewController; });
}

} // namespace ekinora::notifications
