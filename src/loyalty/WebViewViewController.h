#pragma once

#include "platform/ViewController.h"
#include "platform/WebView.h"

namespace ekinora::loyalty {

struct Reply;

// The loyalty club's web portal, opened with a web token the service hands out.
class WebViewViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::WebView, webview)
    Q_PROPERTY(bool showsScrollIndicators READ showsScrollIndicators CONSTANT)
public:
    explicit WebViewViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::WebView* webview;
    // Both scroll indicators of the page are off.
    bool showsVerticalScrollIndicator = true;
    bool showsHorizontalScrollIndicator = true;
    bool showsScrollIndicators() const { return showsVerticalScrollIndicator || showsHorizontalScrollIndicator; }

    void viewDidLoad() override;
    void loadToken();
    void openPortal(const QString& token);
    // The portal's address for a web token, which goes in as it is.
    static QString portalAddress(const QString& token);

public slots:
    void closeButtonTapped(QObject* sender = nullptr);

private:
    void tokenReplied(const Reply& reply);
};

} // namespace ekinora::loyalty
