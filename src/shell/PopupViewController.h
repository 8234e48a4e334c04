#pragma once

#include "platform/Controls.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QJsonValue>
#include <QPointer>

namespace ekinora::shell {

// The campaign card that the popup poll brings up over the whole screen: a banner, a title, an HTML
// body and, for a product campaign, a box with the product's picture and name.
class PopupViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::WebView, webViewContent)
    UI_OUTLET(ekinora::platform::ImageView, imgProduce)
    UI_OUTLET(ekinora::platform::ImageView, imgProduct)
    UI_OUTLET(ekinora::platform::Label, lblProductName)
    UI_OUTLET(ekinora::platform::Label, lblProductType)
    UI_OUTLET(ekinora::platform::View, viewProduct)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintImageBannerHeight)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintViewProductHeight)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintWebViewHeight)
    Q_PROPERTY(QJsonValue dictPopup MEMBER dictPopup)
public:
    explicit PopupViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonValue dictPopup{QJsonValue::Undefined};
    QPointer<platform::ProgressHUD> hud;

    platform::Label* lblTitle;
    platform::WebView* webViewContent;
    platform::ImageView* imgProduce;
    platform::ImageView* imgProduct;
    platform::Label* lblProductName;
    platform::Label* lblProductType; // kept, never written
    platform::View* viewProduct;
    platform::LayoutConstraint* constraintImageBannerHeight;
    platform::LayoutConstraint* constraintViewProductHeight;
    platform::LayoutConstraint* constraintWebViewHeight; // kept, never written

    void viewDidLoad() override;
    void webViewDidFinishNavigation(platform::WebView* webView);

public slots:
    void closePopup();
};

} // namespace ekinora::shell
