#include "WebViewViewController.h"

#include "LoyaltyRequests.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/InlineRequest.h"
#include "service/ServiceCall.h"
#include "service/ServiceRoots.h"

namespace ekinora::loyalty {

using namespace platform;

WebViewViewController::WebViewViewController(QObject* parent)
    : ViewController(parent), webview(makeControl<WebView>("webview")) {
    setTitle(QStringLiteral("Bereket Kulübü"));
}

QUrl WebViewViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Loyalty/WebViewView.qml"));
}

void WebViewViewController::viewDidLoad() {
    loadToken();
    // The screen is the page's navigation delegate, and lets every navigation through.
    webview->setDecidePolicy([](WebView*, const QUrl&, int) { return true; });
    webview->setBounces(false);
    showsVerticalScrollIndicator = false;
    showsHorizontalScrollIndicator = false;
}

QString WebViewViewController::portalAddress(const QString& token) {
    return service::Roots::LoyaltyPortalBase + QStringLiteral("/Login/INdex?token=") + token;
}

void WebViewViewController::loadToken() {
    const QString token = service::InlineRequest::forcedToken();
    // This command takes the token without "Bearer ".
    sendWithBareToken(service::Roots::ServiceBase + QStringLiteral("/?do=webviewToken"), token,
                      [self = strong(this)](const Reply& reply) { self->tokenReplied(reply); });
}

void WebViewViewController::tokenReplied(const Reply& reply) {
    if (!reply.hasBody) return; // a blank screen, nothing said
    const auto tree = parseBody(reply.body, true);
    if (!tree) {
        service::log(QStringLiteral("webviewToken: the reply is not JSON: %1").arg(QString::fromUtf8(reply.body.left(200))));
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), QStringLiteral("Bilinmeyen bir hata oluştu"));
        alert->addAction(QStringLiteral("Tekrar dene"), AlertController::Default, [self = strong(this)] { self->loadToken(); });
        presentViewController(alert, true);
        return;
    }
    // A warning is not looked at: without a token the portal gets the text "null".
    openPortal(textOf(sub(*tree, {QStringLiteral("data"), QStringLiteral("webviewToken")})));
}

void WebViewViewController::openPortal(const QString& token) {
    WaitOverlay::showWaitOverlayWithText(this, QString());
    webview->loadRequest(QUrl(portalAddress(token), QUrl::TolerantMode));
    // The overlay is not bound to the page: the timer alone ends it, also when the screen has gone.
    Platform::current().scheduler().after(2000, [self = strong(this)] { WaitOverlay::removeAllOverlays(self.get()); });
}

void WebViewViewController::closeButtonTapped(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::loyalty
