#include "DeviceOrientation.h"

#include "platform/Application.h"
#include "platform/Platform.h"
#include "service/AppDelegate.h"

namespace ekinora::videos {

namespace {

// The application object owns its platform and its delegate side by side.
service::AppDelegate* applicationDelegate() {
    if (!platform::Platform::exists()) return nullptr;
    QObject* owner = platform::Platform::current().parent();
    return owner ? owner->findChild<service::AppDelegate*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

constexpr int LandscapeMask = 8 | 16;

} // namespace

DeviceOrientation& DeviceOrientation::current() {
    static DeviceOrientation device;
    return device;
}

void DeviceOrientation::setOrientation(int orientation) {
    m_orientation = orientation;
    emit changed();
}

bool DeviceOrientation::interfaceIsLandscape() const {
    const bool landscape = m_orientation == LandscapeLeft || m_orientation == LandscapeRight;
    if (!landscape || !platform::Platform::exists()) return false;
    return platform::Platform::current().application().supportedInterfaceOrientations() & LandscapeMask;
}

void DeviceOrientation::setRestrictRotation(bool restrict) {
    if (service::AppDelegate* delegate = applicationDelegate()) delegate->restrictRotation = restrict;
    // The interface follows the new mask at once.
    emit current().changed();
}

} // namespace ekinora::videos
