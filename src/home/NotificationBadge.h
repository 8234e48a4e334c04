#pragma once

namespace ekinora::platform {
class ViewController;
}

namespace ekinora::home {

// The bell of a screen: asks the service for the unread notices without marking them read and writes
// the count on the screen's right bar button, or "" for none. A failure leaves the badge as it is.
void refreshNotificationBadge(platform::ViewController* screen);

} // namespace ekinora::home
