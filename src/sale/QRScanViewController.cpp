#include "QRScanViewController.h"

#include "SaleRequests.h"
#include "loyalty/Transaction.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/ServiceCall.h"

namespace ekinora::sale {

using namespace platform;
using loyalty::Transaction;

QRScanViewController::QRScanViewController(QObject* parent)
    : ScannerViewController(parent), baslikLabel(makeControl<Label>("baslikLabel")), topView(makeControl<View>("topView")),
      topViewLabel(makeControl<Label>("topViewLabel")) {
    topViewLabel->setText(QStringLiteral("Çiftçi QR Kodu"));
    addSegue(QStringLiteral("toProductListSegue"), SegueKind::Present, QStringLiteral("BarcodeScanProductViewController"));
}

QUrl QRScanViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Sale/QRScanView.qml")); }

void QRScanViewController::closeButtonTapped(QObject*) { dismissViewControllerAnimated(true); }

void QRScanViewController::createTransaction(const QString& code) {
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Kod Okunuyor..."));
    const service::Parameters body{{QStringLiteral("type"), Transaction::transactionType()},
                                   {QStringLiteral("qrCode"), code},
                                   {QStringLiteral("do"), QStringLiteral("dealer/create-transaction")}};
    sendDealerCommand(this, QStringLiteral("/?do=dealer/create-transaction"), "POST", body, [this](const Reply& reply) {
        WaitOverlay::removeAllOverlays(this);
        service::log(QString::fromUtf8(reply.data));
        // No body, or a body that is no JSON: nothing is said and the camera stays stopped.
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        if (!tree) {
            service::log(QStringLiteral("createTransaction: the reply is no JSON"));
            return;
        }
        const Json type = at(*tree, {QStringLiteral("message"), QStringLiteral("type")});
        if (isWarning(*tree)) {
            auto* alert = AlertController::alertControllerWithTitle(
                QStringLiteral("Uyarı"), textOf(at(*tree, {QStringLiteral("message"), QStringLiteral("text")})));
            alert->addAction(QStringLiteral("Tekrar Dene"), AlertController::Default, [this] { startRunning(); });
            presentViewController(alert, true);
        } else if (type.isString() && type.toString() == QStringLiteral("success")) {
            Platform::current().defaults().setString(
                QString::fromLatin1(loyalty::TransactionIdKey),
                textOf(at(*tree, {QStringLiteral("data"), QStringLiteral("TransactionId")})));
            auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Çiftçi Başarıyla Okundu"), QString());
            alert->addAction(QStringLiteral("Ürün Okutun"), AlertController::Default,
                             [this] { performSegueWithIdentifier(QStringLiteral("toProductListSegue")); });
            presentViewController(alert, true);
        }
    });
}

} // namespace ekinora::sale
