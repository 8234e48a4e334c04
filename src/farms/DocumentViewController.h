#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QPointer>

namespace ekinora::farms {

// A document in a web view under its own bar with its title: a period's PDF, or a disease's page on
// the product site.
class DocumentViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, navBar)
    UI_OUTLET(ekinora::platform::WebView, webViewDocument)
public:
    explicit DocumentViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QString urlString;
    QString titleString;

    // The bar's top title is its text.
    platform::Label* navBar;
    platform::WebView* webViewDocument;
    QPointer<platform::ProgressHUD> hud;

    void viewDidLoad() override;
    void webViewDidFinishNavigation(platform::WebView* webView);

public slots:
    void close(QObject* sender = nullptr);
};

// One product as a small card: its name and picture. Nothing opens it at present.
class ProductViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, labelName)
    UI_OUTLET(ekinora::platform::ImageView, imageLogo)
    UI_OUTLET(ekinora::platform::View, viewProduct)
public:
    explicit ProductViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json dictProduct{QJsonValue::Undefined};
    platform::Label* labelName;
    platform::ImageView* imageLogo;
    platform::View* viewProduct;

    void viewDidLoad() override;

public slots:
    void closeView(QObject* sender = nullptr);
};

} // namespace ekinora::farms
