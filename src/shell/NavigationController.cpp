#include "NavigationController.h"

#include "platform/SideMenuViewController.h"

namespace ekinora::shell {

void NavigationController::panGestureRecognized() {
    endEditing();
    if (auto* menu = sideMenuViewController()) menu->endEditing();
}

} // namespace ekinora::shell
