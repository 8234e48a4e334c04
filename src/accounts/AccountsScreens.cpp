#include "AccountsScreens.h"

#include "LoginViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::accounts {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("loginVC"), [] { return new LoginViewController; });
}

} // namespace ekinora::accounts
