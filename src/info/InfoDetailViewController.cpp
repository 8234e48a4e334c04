#include "InfoDetailViewController.h"

#include "service/ServiceCall.h"
#include "service/WSRequest.h"

namespace ekinora::info {

using namespace platform;

InfoDetailViewController::InfoDetailViewController(QObject* parent)
    : ViewController(parent), navBar(makeControl<Label>("navBar")), webViewDocument(makeControl<WebView>("webViewDocument")) {
    navBar->setNumberOfLines(2);
}

QUrl InfoDetailViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Info/InfoDetailView.qml")); }

void InfoDetailViewController::viewDidLoad() {
    hud = ProgressHUD::showHUDAddedTo(this, true);
    webViewDocument->setDidFinishNavigation([this](WebView* web) { webViewDidFinishNavigation(web); });
    webViewDocument->setBounces(false);
    getInfo();
}

void InfoDetailViewController::getInfo() {
    service::ScreenCall call(this, QStringLiteral("getInfo"));
    service::WSRequest request;
    request.doParam = QStringLiteral("page/detail");
    request.slugName = slugName;
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            const Json page = path(response, {QStringLiteral("data"), QStringLiteral("page")});
                            webViewDocument->loadHTMLString(stringWithFormat(
                                QStringLiteral("<html><head></head><body>%@</body></html>"), {member(page, QStringLiteral("text"))}));
                            navBar->setText(stringOrNull(member(page, QStringLiteral("name"))));
                        }),
                        call.failed());
}

void InfoDetailViewController::webViewDidFinishNavigation(WebView*) {
    if (hud) hud->hideAnimated(true);
}

void InfoDetailViewController::close(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::info
