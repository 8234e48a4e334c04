#pragma once

#include "platform/ScannerViewController.h"

namespace ekinora::sale {

// Takes one code off the open transaction's list: the dealer reads the package, sees its product and
// removes it.
class ProductsListEraseViewController : public ekinora::platform::ScannerViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::View, alertView)
    UI_OUTLET(ekinora::platform::ImageView, imgView)
    UI_OUTLET(ekinora::platform::Label, ilacAdiLabel)
    UI_OUTLET(ekinora::platform::Label, topViewLabel)
    UI_OUTLET(ekinora::platform::View, topView)
public:
    explicit ProductsListEraseViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::View* alertView;
    platform::ImageView* imgView;
    platform::Label* ilacAdiLabel;
    platform::Label* topViewLabel;
    platform::View* topView;

    void viewDidLoad() override;

    void getProductCode(const QString& code);
    void deleteProductCode(const QString& code);
    void showRetryAlert(const QString& text);

public slots:
    void closeBtnTapped(QObject* sender = nullptr);
    // Kept as an action; it does nothing.
    void scanNewProductButtonTapped(QObject* sender = nullptr) {}
    void removeButtonTapped(QObject* sender = nullptr);
    void yeniTaratButtonTapped(QObject* sender = nullptr);
    // A touch on the screen; one on the bare card changes nothing, any other hides it and rearms.
    Q_INVOKABLE void touchesBegan(bool onAlertView);

protected:
    void scanCode(const QString& code) override { getProductCode(code); }

private:
    void rearmLater();
};

} // namespace ekinora::sale
