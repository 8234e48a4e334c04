#include "ProfileScreens.h"

#include "DealerViewController.h"
#include "ProfileViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::profile {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("profileVC"), [] { return new ProfileViewController; });
    platform::Storyboard::registerIdentifier(QStringLiteral("dealerVC"), [] { return new DealerViewController; });
}

} // namespace ekinora::profile
