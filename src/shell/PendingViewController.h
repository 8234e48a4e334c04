#pragma once

#include "platform/ViewController.h"

namespace ekinora::shell {

// Stands for a main screen that is not built yet: it carries the menu label as its title and shows
// nothing else.
class PendingViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    Q_PROPERTY(QString storyboardIdentifier MEMBER storyboardIdentifier CONSTANT)
public:
    PendingViewController(const QString& identifier, const QString& title, QObject* parent = nullptr);
    QUrl viewSource() const override;

    QString storyboardIdentifier;
};

// Registers a pending screen for every menu target that has no screen yet.
void registerPendingScreens();

} // namespace ekinora::shell
