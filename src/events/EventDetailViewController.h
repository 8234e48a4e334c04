#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QPointer>

namespace ekinora::events {

// One event: its date, place and text, and for a farmer the two answers. The buttons are always
// painted from the service's "isJoin", never by the screen itself.
class EventDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::Label, lblDay)
    UI_OUTLET(ekinora::platform::Label, lblMonth)
    UI_OUTLET(ekinora::platform::Label, lblPlace)
    UI_OUTLET(ekinora::platform::Label, lblDateRange)
    UI_OUTLET(ekinora::platform::WebView, webContent)
    UI_OUTLET(ekinora::platform::Button, btnAccept)
    UI_OUTLET(ekinora::platform::Button, btnReject)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintButtonHeight)
public:
    explicit EventDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    bool isFarmer = false;
    // Held so that the web view's end of loading can hide it.
    QPointer<platform::ProgressHUD> hud;
    platform::Json objectID{QJsonValue::Undefined};

    platform::Label *lblTitle, *lblDay, *lblMonth, *lblPlace, *lblDateRange;
    platform::WebView* webContent;
    platform::Button *btnAccept, *btnReject;
    platform::LayoutConstraint* constraintButtonHeight;

    void viewDidLoad() override;
    void getEventDetail();
    void webViewDidFinishNavigation(platform::WebView* webView);

public slots:
    void joinEvent(QObject* sender = nullptr);
    void dontJoinEvent(QObject* sender = nullptr);

private:
    void sendAnswer(const QString& status, platform::ProgressHUD* indicator);
    void paintButtons(const platform::Json& isJoin);
};

} // namespace ekinora::events
