#include "DocumentViewController.h"

#include "platform/Foundation.h"
#include "service/TextHelpers.h"

namespace ekinora::farms {

using namespace platform;

DocumentViewController::DocumentViewController(QObject* parent)
    : ViewController(parent), navBar(makeControl<Label>("navBar")), webViewDocument(makeControl<WebView>("webViewDocument")) {
    navBar->setNumberOfLines(2);
}

QUrl DocumentViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Farms/DocumentView.qml")); }

void DocumentViewController::viewDidLoad() {
    navBar->setText(titleString);
    hud = ProgressHUD::showHUDAddedTo(this, true);
    webViewDocument->setDidFinishNavigation([this](WebView* web) { webViewDidFinishNavigation(web); });
    webViewDocument->setBounces(false);
    webViewDocument->loadRequest(QUrl(urlString));
}

void DocumentViewController::webViewDidFinishNavigation(WebView*) {
    if (hud) hud->hideAnimated(true);
}

void DocumentViewController::close(QObject*) { dismissViewControllerAnimated(true); }

ProductViewController::ProductViewController(QObject* parent)
    : ViewController(parent), labelName(makeControl<Label>("labelName")), imageLogo(makeControl<ImageView>("imageLogo")),
      viewProduct(makeControl<View>("viewProduct")) {
    labelName->setNumberOfLines(0);
}

QUrl ProductViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Farms/ProductView.qml")); }

void ProductViewController::viewDidLoad() {
    labelName->setText(service::plainProductName(stringOrNull(member(dictProduct, QStringLiteral("name")))));
    imageLogo->setImageWithURL(QUrl(stringOrNull(member(dictProduct, QStringLiteral("image")))));
    viewProduct->setBorderWidth(1);
    viewProduct->setBorderColor(QColor::fromRgbF(0.9215686274509803, 0.9215686274509803, 0.9215686274509803));
}

void ProductViewController::closeView(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::farms
