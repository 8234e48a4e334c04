#pragma once

#include "platform/NavigationController.h"

namespace ekinora::shell {

// The content stack of every main screen.
class NavigationController : public ekinora::platform::NavigationController {
    Q_OBJECT
public:
    using platform::NavigationController::NavigationController;

public slots:
    // A pan that moves the menu takes the keyboard away, here and in the menu.
    void panGestureRecognized();
};

} // namespace ekinora::shell
