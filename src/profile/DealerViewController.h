#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

namespace ekinora::profile {

// "Bayi Bilgileri": the dealer's shop name, tax number and identity number, read and saved as typed.
class DealerViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TextField, txtDealerName)
    UI_OUTLET(ekinora::platform::TextField, txtDealerTaxNumber)
    UI_OUTLET(ekinora::platform::TextField, txtDealerIdNumber)
    UI_OUTLET(ekinora::platform::Button, updateButton)
public:
    explicit DealerViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TextField *txtDealerName, *txtDealerTaxNumber, *txtDealerIdNumber;
    platform::Button* updateButton;

    void viewDidLoad() override;
    // Observes "checkNotifBadge" under a selector this screen does not have: the next such broadcast
    // ends the application, as the platform does with an unknown selector.
    void viewDidAppear(bool animated) override;

    void getProfile();
    bool textFieldShouldReturn(platform::TextField* field);

public slots:
    void updateProfile(QObject* sender = nullptr);
};

} // namespace ekinora::profile
