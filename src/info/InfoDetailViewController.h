#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QPointer>

namespace ekinora::info {

// One legal page by its slug, under its own bar with the page's name. A failed page leaves the
// indicator up; the user leaves by closing.
class InfoDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, navBar)
    UI_OUTLET(ekinora::platform::WebView, webViewDocument)
public:
    explicit InfoDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json slugName{QJsonValue::Undefined};
    // The bar's top title is its text.
    platform::Label* navBar;
    platform::WebView* webViewDocument;
    QPointer<platform::ProgressHUD> hud;

    void viewDidLoad() override;
    void getInfo();
    void webViewDidFinishNavigation(platform::WebView* webView);
    // positionForBar: top-attached.
    static constexpr int positionForBar = 3;

public slots:
    void close(QObject* sender = nullptr);
};

} // namespace ekinora::info
