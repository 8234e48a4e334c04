#include "EventsScreens.h"

#include "EventDetailViewController.h"
#include "EventViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::events {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("eventVC"), [] { return new EventViewController; });
    Storyboard::registerIdentifier(QStringLiteral("EventDetailViewController"), [] { return new EventDetailViewController; });
}

} // namespace ekinora::events
