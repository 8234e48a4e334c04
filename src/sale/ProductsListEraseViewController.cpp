#include "ProductsListEraseViewController.h"

#include "SaleRequests.h"
#include "loyalty/Transaction.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/ServiceCall.h"

namespace ekinora::sale {

using namespace platform;
using loyalty::Transaction;

ProductsListEraseViewController::ProductsListEraseViewController(QObject* parent)
    : ScannerViewController(parent), alertView(makeControl<View>("alertView")), imgView(makeControl<ImageView>("imgView")),
      ilacAdiLabel(makeControl<Label>("ilacAdiLabel")), topViewLabel(makeControl<Label>("topViewLabel")),
      topView(makeControl<View>("topView")) {
    topViewLabel->setText(QStringLiteral("Listeden Ürün Çıkar"));
}

QUrl ProductsListEraseViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Sale/ProductsListEraseView.qml"));
}

void ProductsListEraseViewController::viewDidLoad() {
    alertView->setHidden(true);
    alertView->setClipsToBounds(true);
}

void ProductsListEraseViewController::getProductCode(const QString& code) {
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Lütfen Bekleyin..."));
    const QString hash = Transaction::transactionHash();
    // The same two values go in the query, as they are, and in the body.
    const QString path = QStringLiteral("/?do=dealer/get-agricultural-pesticide-code&hash=") + hash + QStringLiteral("&serialNumber=") + code;
    const service::Parameters body{{QStringLiteral("hash"), hash}, {QStringLiteral("serialNumber"), code}};
    sendDealerCommand(this, path, "POST", body, [this](const Reply& reply) {
        service::log(QString::fromUtf8(reply.data));
        WaitOverlay::removeAllOverlays(this);
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        const Json root = tree.value_or(nullObject());
        if (!reply.jsonSuccess || isWarning(root)) {
            // No handler: the camera stays stopped until a touch.
            presentViewController(AlertController::simple(QStringLiteral("Uyarı"),
                                                          textOf(at(root, {QStringLiteral("message"), QStringLiteral("text")})),
                                                          QStringLiteral("Tamam")),
                                  true);
            return;
        }
        ilacAdiLabel->setText(withoutRegisteredMark(textOf(at(root, {QStringLiteral("data"), QStringLiteral("name")}))));
        imgView->setImageWithURL(QUrl(textOf(at(root, {QStringLiteral("data"), QStringLiteral("image")}))));
        alertView->setHidden(false);
    });
}

// The code of the last reading goes, whether or not its card is still up.
void ProductsListEraseViewController::removeButtonTapped(QObject*) {
    if (qrString.isEmpty()) {
        presentViewController(AlertController::simple(QStringLiteral("Uyarı"), QStringLiteral("Geçerli bir qr okutun"), QStringLiteral("Tamam")),
                              true);
        return;
    }
    deleteProductCode(qrString);
}

void ProductsListEraseViewController::deleteProductCode(const QString& code) {
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Siliniyor..."));
    const service::Parameters body{{QStringLiteral("hash"), Transaction::transactionHash()}, {QStringLiteral("serialNumber"), code}};
    sendDealerCommand(this, QStringLiteral("/?do=dealer/delete-agricultural-pesticide-code"), "POST", body, [this](const Reply& reply) {
        service::log(QString::fromUtf8(reply.data));
        WaitOverlay::removeAllOverlays(this);
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        const Json root = tree.value_or(nullObject());
        if (!reply.jsonSuccess || isWarning(root))
            return showRetryAlert(textOf(at(root, {QStringLiteral("message"), QStringLiteral("text")})));
        // Back to the list, which loads again as it appears.
        dismissViewControllerAnimated(true);
    });
}

void ProductsListEraseViewController::showRetryAlert(const QString& text) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), text);
    alert->addAction(QStringLiteral("Tekrar Dene"), AlertController::Default, [this] {
        alertView->setHidden(true);
        startRunning();
    });
    presentViewController(alert, true);
}

void ProductsListEraseViewController::rearmLater() {
    Platform::current().scheduler().after(300, [keep = strong(static_cast<ViewController*>(this)), this] { startRunning(); });
}

void ProductsListEraseViewController::yeniTaratButtonTapped(QObject*) {
    alertView->setHidden(true);
    rearmLater();
}

void ProductsListEraseViewController::touchesBegan(bool onAlertView) {
    if (onAlertView) return;
    alertView->setHidden(true);
    rearmLater();
}

void ProductsListEraseViewController::closeBtnTapped(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::sale
