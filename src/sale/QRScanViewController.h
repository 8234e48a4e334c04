#pragma once

#include "platform/ScannerViewController.h"

namespace ekinora::sale {

// The dealer reads the QR code on the farmer's phone; the service opens the transaction of the type
// the entry screen chose and the dealer goes on to the package codes.
class QRScanViewController : public ekinora::platform::ScannerViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, baslikLabel)
    UI_OUTLET(ekinora::platform::View, topView)
    UI_OUTLET(ekinora::platform::Label, topViewLabel)
public:
    explicit QRScanViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Label* baslikLabel;
    platform::View* topView;
    platform::Label* topViewLabel;

    void createTransaction(const QString& code);

public slots:
    // Nothing is open yet: it leaves without asking.
    void closeButtonTapped(QObject* sender = nullptr);

protected:
    void scanCode(const QString& code) override { createTransaction(code); }
};

} // namespace ekinora::sale
