#pragma once

#include "platform/SideMenuViewController.h"

namespace ekinora::shell {

// The application's root for the life of the process: a side-menu container that picks its first
// content from the stored role.
class RootViewController : public ekinora::platform::SideMenuViewController {
    Q_OBJECT
public:
    explicit RootViewController(QObject* parent = nullptr);
    void awakeFromNib();

protected:
    // Its own delegate; nothing to do on any of the four calls.
    void willShowMenuViewController(platform::ViewController*) override {}
    void didShowMenuViewController(platform::ViewController*) override {}
    void willHideMenuViewController(platform::ViewController*) override {}
    void didHideMenuViewController(platform::ViewController*) override {}
};

} // namespace ekinora::shell
