#pragma once

#include <QString>

namespace ekinora::platform {
class ViewController;
}
namespace ekinora::widgets {
class BadgeBarButtonItem;
}

namespace ekinora::notifications {

// The bell of the screens with a navigation bar: the right bar button item, whose badge counts the
// unread notices, and whose tap presents the notice list.
//
// A screen with the bell:
//   - installs the item once, in its constructor:  Bell::install(this);
//   - has a public slot `void setNotifBadge()` that calls Bell::setNotifBadge(this), so that the
//     notification centre can reach it by that selector;
//   - calls setNotifBadge() and Bell::observe(this) where it refreshes (viewDidAppear: for most).
namespace Bell {

// The broadcast that asks every screen with the bell to count again (sent on a remote notification).
inline const QString CheckNotifBadge = QStringLiteral("checkNotifBadge");
// The segue from the bell to the list.
inline const QString NotificationSegue = QStringLiteral("NotificationSegue");

// Makes the screen's right bar button item: a badge item named "btnNotification" with the bell's
// picture, whose tap performs NotificationSegue, a presentation of "NotificationViewController".
widgets::BadgeBarButtonItem* install(platform::ViewController* screen);

// Asks for the count with "ignore_read" "1". Unless "data" is the null object, "data"."unreadCount"
// read as an integer becomes the badge of the screen's right item: "" below 1, else its "%d" form. A
// failure changes nothing. The reply keeps the screen alive.
void setNotifBadge(platform::ViewController* screen);

// Adds the screen as an observer of "checkNotifBadge" with the selector setNotifBadge. Nothing removes
// it: a screen that appeared n times counts n times for one broadcast, which is harmless.
void observe(platform::ViewController* screen);

} // namespace Bell
} // namespace ekinora::notifications
