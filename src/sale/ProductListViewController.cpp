#include "ProductListViewController.h"

#include "SaleRequests.h"
#include "loyalty/Transaction.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/ServiceCall.h"

#include <QJsonArray>

namespace ekinora::sale {

using namespace platform;
using loyalty::QrProduct;
using loyalty::Transaction;

ProductListViewController::ProductListViewController(QObject* parent)
    : ViewController(parent), tableView(makeControl<TableView>("tableView")), backgroundView(makeControl<Label>("backgroundView")) {
    backgroundView->setHidden(true);
    addSegue(QStringLiteral("rmProductVC"), SegueKind::Present, QStringLiteral("ProductsListEraseViewController"));
}

QUrl ProductListViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Sale/ProductListView.qml")); }

void ProductListViewController::viewDidLoad() {
    tableView->setDataSource([this](int) { return numberOfRows(); },
                             [this](int, int row) {
                                 const bool last = row == int(Transaction::barcodeProducts().size());
                                 return cellRow(cellForRow(row), QSizeF(tableView->size().width(), last ? 132 : 88));
                             });
    // Selecting a row does nothing.
}

void ProductListViewController::viewWillAppear(bool) { loadList(); }

// The codes and one more row, the buttons'; behind an empty list the table says so.
int ProductListViewController::numberOfRows() {
    const int codes = int(Transaction::barcodeProducts().size());
    if (codes == 0) {
        backgroundView->setText(QStringLiteral("Ürün Listesi Boş"));
        backgroundView->setNumberOfLines(0);
        backgroundView->setTextColor(Qt::black);
        backgroundView->setHidden(false);
        m_separatorStyle = 0;
    } else {
        backgroundView->setHidden(true);
        m_separatorStyle = 1;
    }
    emit tableLookChanged();
    return codes + 1;
}

QVariantMap ProductListViewController::cellForRow(int row) const {
    const auto& products = Transaction::barcodeProducts();
    if (row < int(products.size())) {
        const QrProduct& product = products.at(row);
        return {{QStringLiteral("reuseIdentifier"), QStringLiteral("barcodeCell")},
                {QStringLiteral("label1"), withoutRegisteredMark(product.product_name)},
                {QStringLiteral("imgView"), product.product_image_url},
                {QStringLiteral("separator"), m_separatorStyle != 0}};
    }
    return {{QStringLiteral("reuseIdentifier"), QStringLiteral("buttonCell")},
            {QStringLiteral("ekleLabel"), QStringLiteral("Ürün Ekle")},
            {QStringLiteral("eraseLabel"), QStringLiteral("Ürün Çıkar")},
            {QStringLiteral("tag"), row}};
}

void ProductListViewController::beginRefreshing() {
    m_refreshing = true;
    emit refreshingChanged();
    loadData();
}

void ProductListViewController::loadData(QObject*) {
    loadList();
    m_refreshing = false;
    emit refreshingChanged();
}

void ProductListViewController::loadList() {
    Transaction::barcodeProducts().clear();
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Liste Yükleniyor..."));
    // No hash: the service finds the open transaction from the bearer, and tells its hash here.
    sendDealerCommand(this, QStringLiteral("/?do=dealer/agricultural-pesticide-list"), "POST", {}, [this](const Reply& reply) {
        service::log(QString::fromUtf8(reply.data));
        WaitOverlay::removeAllOverlays(this);
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        if (!reply.jsonSuccess || !tree || isWarning(*tree)) {
            Transaction::barcodeProducts().clear();
        } else {
            Transaction::transactionHash() = textOf(at(*tree, {QStringLiteral("data"), QStringLiteral("transactionId")}));
            const Json list = at(*tree, {QStringLiteral("data"), QStringLiteral("list")});
            for (const Json& item : list.toArray())
                Transaction::barcodeProducts().append(QrProduct{textOf(at(item, {QStringLiteral("id")})),
                                                                textOf(at(item, {QStringLiteral("name")})),
                                                                textOf(at(item, {QStringLiteral("image")}))});
        }
        tableView->reloadData();
    });
}

void ProductListViewController::ekleButtonTappedWithSender(QObject*) { dismissViewControllerAnimated(true); }

void ProductListViewController::eraseButtonTappedWithSender(QObject*) { performSegueWithIdentifier(QStringLiteral("rmProductVC")); }

void ProductListViewController::closeButtonTapped(QObject*) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Oturumu Sonlandır ?"), QString());
    alert->addAction(QStringLiteral("Evet"), AlertController::Default, [this] { endTransaction(); });
    alert->addAction(QStringLiteral("Vazgeç"), AlertController::Default);
    presentViewController(alert, true);
}

void ProductListViewController::endTransaction() {
    Transaction::barcodeProducts().clear();
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Oturum Sonlandırılıyor..."));
    const service::Parameters body{{QStringLiteral("hash"), Transaction::transactionHash()}};
    // Read as text: only a transport failure or a warning in it counts against.
    sendDealerCommand(this, QStringLiteral("/?do=dealer/delete-transaction"), "POST", body, [this](const Reply& reply) {
        service::log(QString::fromUtf8(reply.data));
        WaitOverlay::removeAllOverlays(this);
        if (hasNoBody(reply)) return;
        const auto tree = treeOf(reply);
        if (!reply.transportOk || (tree && isWarning(*tree))) showListAlert(QStringLiteral("Bilinmeyen Hata"));
        else showListAlert(QStringLiteral("İşlem Başarıyla Tamamlandı"));
    });
}

void ProductListViewController::completeProcessButtonTapped(QObject*) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("İşlemi Onaylamak İstiyor Musunuz ?"), QString());
    alert->addAction(QStringLiteral("Onayla"), AlertController::Default, [this] { confirmTransaction(); });
    alert->addAction(QStringLiteral("Vazgeç"), AlertController::Default);
    presentViewController(alert, true);
}

void ProductListViewController::confirmTransaction() {
    if (Transaction::barcodeProducts().isEmpty()) {
        presentViewController(
            AlertController::simple(QStringLiteral("Uyarı"), QStringLiteral("Listede hiç ürün yok. Lütfen ürün ekleyin"), QStringLiteral("Tamam")),
            true);
        return;
    }
    Transaction::barcodeProducts().clear();
    // The confirmation reuses the list's wording.
    WaitOverlay::showWaitOverlayWithText(this, QStringLiteral("Liste Yükleniyor..."));
    sendDealerCommand(this, QStringLiteral("/?do=dealer/confirm-agricultural-pesticide&hash=") + Transaction::transactionHash(), "GET", {},
                      [this](const Reply& reply) {
                          service::log(QString::fromUtf8(reply.data));
                          WaitOverlay::removeAllOverlays(this);
                          if (hasNoBody(reply)) return;
                          // The service's words are the result, accepted or refused.
                          const auto tree = treeOf(reply);
                          showListAlert(textOf(at(tree.value_or(nullObject()), {QStringLiteral("message"), QStringLiteral("text")})));
                          tableView->reloadData();
                      });
}

void ProductListViewController::showListAlert(const QString& text) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), text);
    alert->addAction(QStringLiteral("Tamam"), AlertController::Default, [] {
        dismissEverything();
        Transaction::barcodeProducts().clear();
    });
    Platform::current().scheduler().after(0, [keep = strong(static_cast<ViewController*>(this)), this, alert] {
        presentViewController(alert, true);
    });
}

} // namespace ekinora::sale
