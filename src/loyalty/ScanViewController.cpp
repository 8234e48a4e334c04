#include "ScanViewController.h"

#include "LoyaltyRequests.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/InlineRequest.h"
#include "service/LocalStore.h"
#include "service/ServiceCall.h"

namespace ekinora::loyalty {

using namespace platform;

namespace {
const QColor Leaf = QColor::fromRgbF(0.47058823529411764, 0.7254901960784313, 0.18823529411764706, 1.0);
}

ScanViewController::ScanViewController(QObject* parent)
    : ScannerViewController(parent),
      purchasePtLabel(addControl(new PointLabel(QStringLiteral("purchasePtLabel"), {18.0, Qt::white, Leaf}))),
      titleView(makeControl<View>("titleView")), titleLabel(makeControl<Label>("titleLabel")),
      alertView(makeControl<View>("alertView")), imgView(makeControl<ImageView>("imgView")),
      ilacAdiLabel(makeControl<Label>("ilacAdiLabel")),
      ilacPuanLabel(addControl(new PointLabel(QStringLiteral("ilacPuanLabel"), {14.0, {}, {}}))) {
    setTitle(QStringLiteral("Ürün Tarat"));
    titleLabel->setText(QStringLiteral("Ürün Kodunu Okutun"));
    ilacAdiLabel->setNumberOfLines(0);
    ilacPuanLabel->setNumberOfLines(0);
    purchasePtLabel->setNumberOfLines(0);
}

QUrl ScanViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Loyalty/ScanView.qml")); }

void ScanViewController::viewDidLoad() {
    ScannerViewController::viewDidLoad();
    alertView->setHidden(true);
    alertView->setClipsToBounds(true);
    purchasePtLabel->setCornerRadius(7.0);
    purchasePtLabel->setClipsToBounds(true);
    service::log(QStringLiteral("userInfo: %1").arg(textOf(service::LocalStore::userInfo())));
}

void ScanViewController::scanCode(const QString& code) {
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Kod Okunuyor..."));
    // Only a signed-in farmer reaches this screen: no token is a fault that stops the application.
    const QString token = service::InlineRequest::forcedToken();
    sendScan(token, code, [self = strong(this)](const Reply& reply) { self->scanReplied(reply); });
}

void ScanViewController::scanReplied(const Reply& reply) {
    service::log(QStringLiteral("scan reply: %1").arg(QString::fromUtf8(reply.body)));
    WaitOverlay::removeAllOverlays(this);
    if (!reply.hasBody) return; // the camera stays stopped until a touch
    const auto tree = parseBody(reply.body, false);
    if (!tree) return retryAlert(QStringLiteral("Uyarı"), QStringLiteral("Bilinmeyen bir hata oluştu"));

    const Json type = sub(*tree, {QStringLiteral("message"), QStringLiteral("type")});
    if (isString(type, QStringLiteral("warning"))) {
        // An unknown code or one already used: the service writes the text.
        retryAlert(QStringLiteral("Kod Okunamadı"), textOf(sub(*tree, {QStringLiteral("message"), QStringLiteral("text")})));
    } else if (isString(type, QStringLiteral("success"))) {
        const Json data = sub(*tree, QStringLiteral("data"));
        imgView->setImageUrl(QUrl());
        const QUrl picture(textOf(sub(data, QStringLiteral("image"))), QUrl::StrictMode);
        if (picture.isValid() && !picture.isRelative()) imgView->setImageWithURL(picture);
        ilacAdiLabel->setText(loyaltyProductName(textOf(sub(data, QStringLiteral("name")))));
        showPoints(textOf(sub(data, QStringLiteral("campaignPoint"))), textOf(sub(data, QStringLiteral("purchasePoint"))));
    }
    // Any other type: nothing more; a touch starts the camera again.
}

void ScanViewController::retryAlert(const QString& title, const QString& message) {
    auto* alert = AlertController::alertControllerWithTitle(title, message);
    alert->addAction(QStringLiteral("Tekrar Dene"), AlertController::Default, [self = strong(this)] { self->startRunning(); });
    presentViewController(alert, true);
}

void ScanViewController::setPointText(PointLabel* label, const QString& text) {
    static const QString Open = QStringLiteral("<b>"), Close = QStringLiteral("</b>");
    if (text.contains(Open)) {
        const int open = int(text.indexOf(Open));
        const int close = int(text.indexOf(Close, open + Open.size()));
        // The reply format promises the closing tag.
        if (close < 0) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (</b>)"));
        const QString marked = text.mid(open + Open.size(), close - open - Open.size());
        QString cleaned = text;
        cleaned.remove(Open);
        cleaned.remove(Close);
        label->setAttributedText(cleaned, int(cleaned.indexOf(marked)), int(marked.size()));
    } else if (text == QStringLiteral("null")) {
        label->setPlainText(QString());
    } else {
        label->setPlainText(text);
    }
}

void ScanViewController::showPoints(const QString& campaignPoint, const QString& purchasePoint) {
    setPointText(ilacPuanLabel, purchasePoint);
    setPointText(purchasePtLabel, campaignPoint);
    setCardHidden(false, 400);
}

void ScanViewController::setCardHidden(bool hidden, int transitionMs) {
    if (m_cardTransitionMs != transitionMs) {
        m_cardTransitionMs = transitionMs;
        emit cardTransitionChanged();
    }
    alertView->setHidden(hidden);
}

// The restart holds the screen for its 0.3 seconds: a screen that has gone may still start once.
void ScanViewController::startRunningLater() {
    Platform::current().scheduler().after(300, [self = strong(this)] { self->startRunning(); });
}

void ScanViewController::yeniTaratButtonTapped(QObject*) { rearmScanner(); }

void ScanViewController::rearmScanner() {
    setCardHidden(true, 0);
    startRunningLater();
}

void ScanViewController::touchesBegan(QObject* touchedView) {
    if (!touchedView || touchedView == alertView) return;
    setCardHidden(true, 400);
    startRunningLater(); // counted from the touch, not from the end of the dissolve
}

void ScanViewController::closeButtonTapped(QObject*) { closeScreen(); }

void ScanViewController::closeScreen() {
    emit windowTransition(500);
    dismissViewControllerAnimated(false);
}

} // namespace ekinora::loyalty
