#include "PopupViewController.h"

#include "platform/Foundation.h"
#include "platform/Window.h"
#include "service/TextHelpers.h"

namespace ekinora::shell {

using namespace platform;

PopupViewController::PopupViewController(QObject* parent)
    : ViewController(parent), lblTitle(makeControl<Label>("lblTitle")),
      webViewContent(makeControl<WebView>("webViewContent")), imgProduce(makeControl<ImageView>("imgProduce")),
      imgProduct(makeControl<ImageView>("imgProduct")), lblProductName(makeControl<Label>("lblProductName")),
      lblProductType(makeControl<Label>("lblProductType")), viewProduct(makeControl<View>("viewProduct")),
      constraintImageBannerHeight(makeControl<LayoutConstraint>("constraintImageBannerHeight", 0.0)),
      constraintViewProductHeight(makeControl<LayoutConstraint>("constraintViewProductHeight", 0.0)),
      constraintWebViewHeight(makeControl<LayoutConstraint>("constraintWebViewHeight", 0.0)) {
    lblProductName->setNumberOfLines(2);
    lblTitle->setNumberOfLines(0);
}

QUrl PopupViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Shell/PopupView.qml")); }

void PopupViewController::viewDidLoad() {
    const double screenWidth = Window::Width;
    // 1.
    hud = ProgressHUD::showHUDAddedTo(this, true);
    webViewContent->setDidFinishNavigation([this](WebView* web) { webViewDidFinishNavigation(web); });

    // 2. The product box, only when the campaign names a product.
    if (member(dictPopup, QStringLiteral("pest_id")).isNull()) {
        constraintViewProductHeight->setConstant(0);
    } else {
        constraintViewProductHeight->setConstant((screenWidth - 32) / 4);
        imgProduct->setImageUrl(QUrl(stringOrNull(member(dictPopup, QStringLiteral("pest_file_path")))));
        const Json name = member(dictPopup, QStringLiteral("pest_name"));
        if (!name.isUndefined() && !name.isString())
            fatal(QStringLiteral("-[%1 isEqualToString:]: unrecognized selector sent to instance").arg(name.isNull() ? "NSNull" : "__NSCFNumber"));
        if (!isString(name, QString())) {
            // The trim of a final newline that the same code does elsewhere: here it takes the name's last
            // letter (or its "®") away, and that is how the card shows it.
            QString text = service::plainProductName(name.toString());
            if (!name.isUndefined()) {
                if (text.isEmpty())
                    fatal(QStringLiteral("-[__NSCFString substringToIndex:]: Index 18446744073709551615 out of bounds; string length 0"));
                text.chop(1);
            }
            lblProductName->setText(text);
        }
    }

    // 3. The banner: its address as text; a JSON null reads "<null>", which opens the banner with an
    // address that cannot load.
    const Json filePath = member(dictPopup, QStringLiteral("file_path"));
    const QString bannerText = filePath.isUndefined() ? QString() : description(filePath);
    if (!bannerText.isEmpty()) {
        constraintImageBannerHeight->setConstant((screenWidth - 16) / 2);
        imgProduce->setImageUrl(QUrl(bannerText));
    } else {
        constraintImageBannerHeight->setConstant(0);
    }

    // 4.
    lblTitle->setText(stringOrNull(member(dictPopup, QStringLiteral("header"))));

    // 5. The body in the card's font.
    const QString fontName = QStringLiteral("AvenirNext-Medium");
    const int fontSize = 16;
    webViewContent->loadHTMLString(
        stringWithFormat(QStringLiteral("<span style=\"font-family: %@; font-size: %i\">%@</span>"),
                         {fontName, fontSize, member(dictPopup, QStringLiteral("content"))}),
        QUrl());
    webViewContent->setBounces(false);

    // 6.
    viewProduct->setBorderColor(QColor(235, 235, 235));
    viewProduct->setBorderWidth(1);
}

void PopupViewController::webViewDidFinishNavigation(WebView* webView) {
    if (hud) hud->hideAnimated(true, 0.5);
    // The height is asked for and not used.
    webView->evaluateJavaScript(
        QStringLiteral("(document.height !== undefined) ? document.height : document.body.offsetHeight;"),
        [](const QVariant&) {});
}

void PopupViewController::closePopup() { dismissViewControllerAnimated(true); }

} // namespace ekinora::shell
