#pragma once

#include "platform/ViewController.h"

namespace ekinora::shell {

// Stands for a main screen that is not built yet: it carries the menu label as its title and shows
// nothing else. The one for the home also leads to the sign-in when nobody is signed in, as the home
// does at its appearance, so that the application can be entered.
class PendingViewController : public platform::ViewController {
    Q_OBJECT
    Q_PROPERTY(QString storyboardIdentifier MEMBER storyboardIdentifier CONSTANT)
public:
    PendingViewController(const QString& identifier, const QString& title, bool leadsToLogin, QObject* parent = nullptr);
    QUrl viewSource() const override;
    void viewDidAppear(bool animated) override;

    QString storyboardIdentifier;

private:
    bool m_leadsToLogin;
};

// Registers a pending screen for every menu target that has no screen yet.
void registerPendingScreens();

} // namespace ekinora::shell
