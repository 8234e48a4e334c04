#include "HomeScreens.h"

#include "ViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::home {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("firstViewController"), [] { return new ViewController; });
}

} // namespace ekinora::home
