#include "BarcodeScanProductViewController.h"

#include "SaleRequests.h"
#include "loyalty/Transaction.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "platform/Storyboard.h"
#include "service/ServiceCall.h"

namespace ekinora::sale {

using namespace platform;
using loyalty::Transaction;

BarcodeScanProductViewController::BarcodeScanProductViewController(QObject* parent)
    : ScannerViewController(parent), topView(makeControl<View>("topView")), topViewLabel(makeControl<Label>("topViewLabel")),
      alertView(makeControl<View>("alertView")), imgView(makeControl<ImageView>("imgView")),
      ilacAdiLabel(makeControl<Label>("ilacAdiLabel")), closeButton(makeControl<BarButtonItem>("closeButton")) {
    topViewLabel->setText(QStringLiteral("Ürün Kodu Okutun"));
    closeButton->setTitle(QStringLiteral("Kapat"));
    closeButton->addTarget(this, &BarcodeScanProductViewController::closeButtonTapped);
    addSegue(QStringLiteral("toProductListVC"), SegueKind::Present, QStringLiteral("ProductListViewController"));
}

QUrl BarcodeScanProductViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Sale/BarcodeScanProductView.qml"));
}

void BarcodeScanProductViewController::viewDidLoad() {
    alertView->setHidden(true);
    alertView->setClipsToBounds(true);
}

void BarcodeScanProductViewController::addProductCode(const QString& code) {
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Kod Okunuyor..."));
    // The number the create reply gave, as stored; JSON null when there is none.
    const QString stored = Platform::current().defaults().stringForKey(QString::fromLatin1(loyalty::TransactionIdKey));
    const service::Parameters body{{QStringLiteral("hash"), stored.isNull() ? nullObject() : Json(stored)},
                                   {QStringLiteral("serialNumber"), code}};
    sendDealerCommand(this, QStringLiteral("/?do=dealer/add-agricultural-pesticide-code"), "POST", body, [this](const Reply& reply) {
        service::log(QString::fromUtf8(reply.data));
        WaitOverlay::removeAllOverlays(this);
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        if (!tree) return;
        auto retry = [this](const QString& title) {
            auto* alert = AlertController::alertControllerWithTitle(title, QStringLiteral("Lütfen Tekrar Deneyiniz"));
            alert->addAction(QStringLiteral("Tekrar Dene"), AlertController::Default, [this] { startRunning(); });
            presentViewController(alert, true);
        };
        if (!reply.jsonSuccess) return retry(QStringLiteral("Kod Okunamadı"));
        // The service's own words are the title here: a code already on the list, or refused.
        if (isWarning(*tree)) return retry(textOf(at(*tree, {QStringLiteral("message"), QStringLiteral("text")})));
        imgView->setImage(QString());
        imgView->setImageUrl(QUrl());
        imgView->setImage(QStringLiteral("fungol"));
        imgView->setImageWithURL(QUrl(textOf(at(*tree, {QStringLiteral("data"), QStringLiteral("image")}))));
        ilacAdiLabel->setText(withoutRegisteredMark(textOf(at(*tree, {QStringLiteral("data"), QStringLiteral("name")}))));
        Platform::current().scheduler().after(0, [keep = strong(static_cast<ViewController*>(this)), this] {
            alertView->setHidden(false);
            closeButton->setEnabled(false);
        });
    });
}

void BarcodeScanProductViewController::scanNewProductButtonTapped(QObject*) {
    closeButton->setEnabled(true);
    alertView->setHidden(true);
    startRunning();
}

void BarcodeScanProductViewController::continueButtonTapped(QObject*) {
    performSegueWithIdentifier(QStringLiteral("toProductListVC"));
    alertView->setHidden(true);
}

void BarcodeScanProductViewController::closeButtonTapped(QObject*) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Oturumu Sonlandır ?"), QString());
    alert->addAction(QStringLiteral("Evet"), AlertController::Default, [this] { endTransaction(); });
    alert->addAction(QStringLiteral("Vazgeç"), AlertController::Default);
    presentViewController(alert, true);
}

void BarcodeScanProductViewController::endTransaction() {
    Transaction::barcodeProducts().clear();
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Oturum Sonlandırılıyor..."));
    // The "hash" this screen would send is dropped: the request goes without a body.
    sendDealerCommand(this, QStringLiteral("/?do=dealer/delete-transaction"), "POST", {}, [this](const Reply& reply) {
        service::log(QString::fromUtf8(reply.data));
        WaitOverlay::removeAllOverlays(this);
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        if (!tree) return;
        if (!reply.jsonSuccess || isWarning(*tree)) showFinishAlert(QStringLiteral("Bilinmeyen Hata"));
        else showFinishAlert(QStringLiteral("İşlem Başarıyla Tamamlandı"));
    });
}

void BarcodeScanProductViewController::showFinishAlert(const QString& text) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), text);
    alert->addAction(QStringLiteral("Tamam"), AlertController::Default, [this] {
        // The sale's entry screen over all that was open; it makes the next transaction a sale.
        ViewController* entry = Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("barcodeVC"));
        if (!entry) return;
        entry->modalPresentationStyle = 0;
        presentViewController(entry, false);
    });
    Platform::current().scheduler().after(0, [keep = strong(static_cast<ViewController*>(this)), this, alert] {
        presentViewController(alert, true);
    });
}

} // namespace ekinora::sale
