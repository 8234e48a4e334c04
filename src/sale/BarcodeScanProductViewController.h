#pragma once

#include "platform/ScannerViewController.h"

namespace ekinora::sale {

// The dealer reads the code of each package; the service puts it on the open transaction's list and
// the product comes up on a card. From here the dealer goes on to the list or ends the transaction.
class BarcodeScanProductViewController : public ekinora::platform::ScannerViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::View, topView)
    UI_OUTLET(ekinora::platform::Label, topViewLabel)
    UI_OUTLET(ekinora::platform::View, alertView)
    UI_OUTLET(ekinora::platform::ImageView, imgView)
    UI_OUTLET(ekinora::platform::Label, ilacAdiLabel)
    UI_OUTLET(ekinora::platform::BarButtonItem, closeButton)
public:
    explicit BarcodeScanProductViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::View* topView;
    platform::Label* topViewLabel;
    platform::View* alertView;
    platform::ImageView* imgView;
    platform::Label* ilacAdiLabel;
    platform::BarButtonItem* closeButton;

    void viewDidLoad() override;

    void addProductCode(const QString& code);
    // This scanner's end of the transaction: the service has only the bearer to go by.
    void endTransaction();
    // The answer to an end, then the sale's entry screen over everything.
    void showFinishAlert(const QString& text);

public slots:
    void scanNewProductButtonTapped(QObject* sender = nullptr);
    void continueButtonTapped(QObject* sender = nullptr);
    void closeButtonTapped(QObject* sender = nullptr);

protected:
    void scanCode(const QString& code) override { addProductCode(code); }
};

} // namespace ekinora::sale
