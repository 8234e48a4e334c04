#include "Seams.h"

namespace ekinora::platform {

KeyboardManager& KeyboardManager::sharedManager() {
    static KeyboardManager manager;
    return manager;
}

NavigationBarAppearance& NavigationBarAppearance::shared() {
    static NavigationBarAppearance appearance;
    return appearance;
}

} // namespace ekinora::platform
