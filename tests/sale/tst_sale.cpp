// The dealer's sale against scripted replies: reading the farmer, adding codes, ending from the
// scanner and from the list, the list itself, confirming and removing, with the faults the service
// reports.

#include "FakePlatform.h"
#include "loyalty/Transaction.h"
#include "platform/AlertController.h"
#include "platform/Capture.h"
#include "platform/Storyboard.h"
#include "sale/BarcodeScanProductViewController.h"
#include "sale/ProductListViewController.h"
#include "sale/ProductsListEraseViewController.h"
#include "sale/QRScanViewController.h"
#include "sale/SaleScreens.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;
using namespace ekinora::sale;
using loyalty::Transaction;

namespace {

QJsonObject reply(const QString& type, const QString& text, const QJsonValue& data = QJsonObject{}) {
    return QJsonObject{{"status", 200}, {"message", QJsonObject{{"type", type}, {"text", text}}}, {"data", data}};
}
MachineReadableCodeObject code(const QString& text) { return {MetadataObjectType::QRCode, text, {}, {}}; }
QJsonObject bodyOf(const HttpRequest& r) { return QJsonDocument::fromJson(r.body).object(); }
class Entry : public ViewController {};

} // namespace

class SaleTest : public QObject {
    Q_OBJECT
    std::unique_ptr<FakePlatform> fake;
    Entry* entry = nullptr;

    template <class T> T* present(const QString& identifier) {
        auto* screen = qobject_cast<T*>(Storyboard::instantiateViewControllerWithIdentifier(identifier));
        entry->presentViewController(screen, false);
        fake->run(0);
        return screen;
    }
    QString top() const { return fake->platform->window().presentedControllers().last()->className(); }

private slots:
    void init() {
        fake = std::make_unique<FakePlatform>();
        fake->store->setString("token", "tok-1");
        DevelopmentCamera::install(QString());
        sale::registerScreens();
        Storyboard::registerIdentifier("barcodeVC", [] { return new Entry; });
        entry = new Entry;
        fake->platform->window().setRootViewController(entry);
        fake->platform->window().makeKeyAndVisible();
        Transaction::barcodeProducts().clear();
        Transaction::transactionHash().clear();
    }
    void cleanup() {
        fake.reset();
        DevelopmentCamera::uninstall();
    }

    void readingTheFarmerOpensTheTransaction() {
        Transaction::transactionType() = "award";
        auto* scan = present<QRScanViewController>("QRScanViewController");
        fake->http->on("dealer/create-transaction", jsonReply(reply("warning", "Geçersiz QR kodu.")));
        scan->metadataFound({code("QR-FARMER-1")});
        QCOMPARE(fake->platform->window().waitText(), QStringLiteral("Kod Okunuyor..."));
        fake->run(0);
        const HttpRequest sent = fake->http->requests.last();
        QCOMPARE(sent.method, QByteArray("POST"));
        QVERIFY(sent.url.endsWith("/api/?do=dealer/create-transaction"));
        QCOMPARE(sent.header("Authorization"), QByteArray("Bearer tok-1"));
        QCOMPARE(bodyOf(sent), (QJsonObject{{"type", "award"}, {"qrCode", "QR-FARMER-1"}, {"do", "dealer/create-transaction"}}));
        QCOMPARE(fake->alert()->message(), QStringLiteral("Geçersiz QR kodu."));
        QVERIFY(!scan->isRunning() && !fake->platform->window().waitVisible());
        fake->alert()->tapButton(0);
        QVERIFY(scan->isRunning());

        // The number comes with a capital, as a number: it is kept as its text.
        fake->http->on("dealer/create-transaction", jsonReply(reply("success", "", QJsonObject{{"TransactionId", 4711}})));
        scan->metadataFound({code("QR-FARMER-1")});
        fake->run(0);
        QCOMPARE(fake->store->stringForKey("transaction_id"), QStringLiteral("4711"));
        QCOMPARE(fake->alert()->title(), QStringLiteral("Çiftçi Başarıyla Okundu"));
        QCOMPARE(fake->alert()->buttonTitles(), QStringList{"Ürün Okutun"});
        fake->alert()->tapButton(0);
        QCOMPARE(top(), QStringLiteral("BarcodeScanProductViewController"));
    }

    void addingCodesAndEndingFromTheScanner() {
        auto* scan = present<BarcodeScanProductViewController>("BarcodeScanProductViewController");
        QVERIFY(scan->alertView->isHidden());
        // No transaction number stored: "hash" goes as JSON null; a duplicate is titled by the service.
        fake->http->on("dealer/add-agricultural-pesticide-code", jsonReply(reply("warning", "Bu ürün kodu zaten listenizde.")));
        scan->metadataFound({code("PKG-1")});
        fake->run(0);
        QCOMPARE(bodyOf(fake->http->requests.last()), (QJsonObject{{"hash", QJsonValue::Null}, {"serialNumber", "PKG-1"}}));
        QCOMPARE(fake->alert()->title(), QStringLiteral("Bu ürün kodu zaten listenizde."));
        QCOMPARE(fake->alert()->message(), QStringLiteral("Lütfen Tekrar Deneyiniz"));
        fake->alert()->tapButton(0);
        QVERIFY(scan->isRunning());

        fake->store->setString("transaction_id", "abc");
        fake->http->on("dealer/add-agricultural-pesticide-code",
                       jsonReply(reply("success", "", QJsonObject{{"name", "Fungol<sup>&reg;</sup> 250 EC"}, {"image", "http://h/p.png"}})));
        scan->metadataFound({code("PKG-2")});
        fake->run(0);
        QCOMPARE(bodyOf(fake->http->requests.last()).value("hash"), QJsonValue("abc"));
        QVERIFY(!scan->alertView->isHidden());
        QCOMPARE(scan->ilacAdiLabel->text(), QStringLiteral("Fungol 250 EC"));
        QCOMPARE(scan->imgView->imageUrl(), QUrl("http://h/p.png"));
        // No way out while the card is up, until the dealer scans anew.
        QVERIFY(!scan->closeButton->isEnabled());
        scan->scanNewProductButtonTapped();
        QVERIFY(scan->closeButton->isEnabled() && scan->alertView->isHidden() && scan->isRunning());

        // Ending: the list is gone before anything is sent, the request has no body, and a failure
        // still leads to the sale's entry.
        Transaction::barcodeProducts() = {loyalty::QrProduct{"1", "A", "u"}};
        fake->http->on("dealer/delete-transaction", jsonReply(reply("warning", "Açık bir işleminiz bulunmuyor.")));
        scan->closeButton->tap();
        fake->alert()->tapButton(0);
        QVERIFY(Transaction::barcodeProducts().isEmpty());
        fake->run(0);
        QVERIFY(fake->http->requests.last().body.isEmpty());
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bilinmeyen Hata"));
        fake->alert()->tapButton(0);
        auto* landed = fake->platform->window().presentedControllers().last();
        QCOMPARE(landed->property("storyboardIdentifier").toString(), QStringLiteral("barcodeVC"));
        QCOMPARE(landed->presentingViewController(), scan);
    }

    void theListItsEndAndItsConfirmation() {
        fake->http->on("dealer/agricultural-pesticide-list",
                       jsonReply(reply("success", "", QJsonObject{{"transactionId", "h-9"},
                                                                  {"list", QJsonArray{QJsonObject{{"id", 5}, {"name", "Ürün<sup>&reg;</sup> A"}, {"image", "http://h/a.png"}},
                                                                                      QJsonObject{{"id", 6}, {"name", "Ürün B"}}}}})));
        auto* list = present<ProductListViewController>("ProductListViewController");
        QVERIFY(fake->http->requests.last().body.isEmpty());
        QCOMPARE(Transaction::transactionHash(), QStringLiteral("h-9"));
        QCOMPARE(list->tableView->numberOfRows(), 3);
        QCOMPARE(list->tableView->cellForRow(0).values.value("label1").toString(), QStringLiteral("Ürün A"));
        // Read by its own keys: a missing image is the text "null", and the record still stands.
        QCOMPARE(Transaction::barcodeProducts().at(1).id, QStringLiteral("6"));
        QCOMPARE(Transaction::barcodeProducts().at(1).product_image_url, QStringLiteral("null"));
        QCOMPARE(list->tableView->cellForRow(2).reuseIdentifier, QStringLiteral("buttonCell"));
        QVERIFY(list->backgroundView->isHidden());

        // A refused confirmation: the service's words, then everything presented goes, list and all.
        fake->http->on("dealer/confirm-agricultural-pesticide", jsonReply(reply("warning", "Bu işlem daha önce onaylanmış.")));
        list->completeProcessButtonTapped();
        fake->alert()->tapButton(0);
        QVERIFY(Transaction::barcodeProducts().isEmpty());
        fake->run(0);
        const HttpRequest confirm = fake->http->requests.last();
        QCOMPARE(confirm.method, QByteArray("GET"));
        QVERIFY(confirm.url.endsWith("/api/?do=dealer/confirm-agricultural-pesticide&hash=h-9"));
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bu işlem daha önce onaylanmış."));
        fake->alert()->tapButton(0);
        QVERIFY(fake->platform->window().presentedControllers().isEmpty());

        // An empty list (a warning reads as one): the button row alone, the label behind it, and a
        // confirmation that sends nothing.
        fake->http->on("dealer/agricultural-pesticide-list", jsonReply(reply("warning", "Açık bir işleminiz bulunmuyor.")));
        list = present<ProductListViewController>("ProductListViewController");
        QCOMPARE(list->tableView->numberOfRows(), 1);
        QVERIFY(!list->backgroundView->isHidden());
        const int sent = int(fake->http->requests.size());
        list->completeProcessButtonTapped();
        fake->alert()->tapButton(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Listede hiç ürün yok. Lütfen ürün ekleyin"));
        QCOMPARE(int(fake->http->requests.size()), sent);
        fake->alert()->tapButton(0);

        // The list's end names the transaction.
        fake->http->on("dealer/delete-transaction", jsonReply(reply("success", "İşlem sonlandırıldı.")));
        list->closeButtonTapped();
        fake->alert()->tapButton(0);
        fake->run(0);
        QCOMPARE(bodyOf(fake->http->requests.last()), (QJsonObject{{"hash", "h-9"}}));
        QCOMPARE(fake->alert()->message(), QStringLiteral("İşlem Başarıyla Tamamlandı"));
    }

    void removingACode() {
        Transaction::transactionHash() = "h-9";
        auto* eraser = present<ProductsListEraseViewController>("ProductsListEraseViewController");
        fake->http->on("dealer/get-agricultural-pesticide-code", jsonReply(reply("success", "", QJsonObject{{"name", "Ürün A"}, {"image", "x"}})));
        eraser->metadataFound({code("PKG-1")});
        QCOMPARE(fake->platform->window().waitText(), QStringLiteral("Lütfen Bekleyin..."));
        fake->run(0);
        const HttpRequest get = fake->http->requests.last();
        QVERIFY(get.url.endsWith("?do=dealer/get-agricultural-pesticide-code&hash=h-9&serialNumber=PKG-1"));
        QCOMPARE(bodyOf(get), (QJsonObject{{"hash", "h-9"}, {"serialNumber", "PKG-1"}}));
        QVERIFY(!eraser->alertView->isHidden());
        // A touch on the card keeps it; the removal fails: the service's text, and reading again.
        eraser->touchesBegan(true);
        QVERIFY(!eraser->alertView->isHidden());
        fake->http->on("dealer/delete-agricultural-pesticide-code", jsonReply(reply("warning", "Bu ürün kodu listenizde bulunmuyor.")));
        eraser->removeButtonTapped();
        fake->run(0);
        QCOMPARE(bodyOf(fake->http->requests.last()), (QJsonObject{{"hash", "h-9"}, {"serialNumber", "PKG-1"}}));
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bu ürün kodu listenizde bulunmuyor."));
        fake->alert()->tapButton(0);
        QVERIFY(eraser->alertView->isHidden() && eraser->isRunning());
        // A removal that succeeds goes back to the list.
        fake->http->on("dealer/delete-agricultural-pesticide-code", jsonReply(reply("success", "")));
        eraser->removeButtonTapped();
        fake->run(0);
        QVERIFY(fake->platform->window().presentedControllers().isEmpty());
    }
};

QTEST_MAIN(SaleTest)
#include "tst_sale.moc"
