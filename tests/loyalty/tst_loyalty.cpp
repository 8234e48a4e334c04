// The loyalty screens against scripted replies: the scan's request and its answers, the points rule,
// the farmer's own QR code, the dealer's entries and the club portal.

#include "FakePlatform.h"
#include "loyalty/EntryViewControllers.h"
#include "loyalty/MyQrCodeViewController.h"
#include "loyalty/ScanViewController.h"
#include "loyalty/Transaction.h"
#include "loyalty/WebViewViewController.h"
#include "platform/AlertController.h"
#include "platform/Storyboard.h"
#include "platform/Window.h"
#include "service/ServiceRoots.h"

#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::loyalty;
using namespace ekinora::platform;
using namespace ekinora::testing;

namespace {

QJsonObject success(const QJsonObject& data) {
    return {{"status", 200}, {"message", QJsonObject{{"type", "success"}, {"text", ""}}}, {"errors", QJsonObject{}}, {"data", data}};
}
QJsonObject warning(const QString& text) {
    return {{"status", 400}, {"message", QJsonObject{{"type", "warning"}, {"text", text}}}, {"errors", QJsonObject{}}, {"data", QJsonValue::Null}};
}
MachineReadableCodeObject code(const QString& value) { return {MetadataObjectType::QRCode, value, {}, {}}; }

// A stand-in for the dealer's QR reading screen.
class StandIn : public ViewController {};

} // namespace

class LoyaltyTest : public QObject {
    Q_OBJECT
    std::unique_ptr<FakePlatform> fake;

    template <class T> T* show(T* screen) {
        fake->platform->window().setRootViewController(screen);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    bool waiting() const { return fake->platform->window().waitVisible(); }

private slots:
    void init() {
        fake = std::make_unique<FakePlatform>();
        fake->store->setString("token", "tok42");
        DevelopmentCamera::install(QString());
    }
    void cleanup() {
        fake.reset();
        DevelopmentCamera::uninstall();
    }

    void scanSendsOneRequestAndShowsTheCard() {
        fake->http->on("agricultural-pesticide-code/scan",
                       jsonReply(success({{"name", "Tarox<sup>&reg;</sup> 25 EC <sup>&reg;</sup>"},
                                          {"image", "http://127.0.0.1:8470/media/tarox.png"},
                                          {"campaignPoint", "Kampanya ile <b>+50 puan</b> kazandınız"},
                                          {"purchasePoint", "Bu alımdan 120 puan"}})));
        auto* screen = show(new ScanViewController);
        QVERIFY(screen->alertView->isHidden() && screen->isRunning());
        screen->metadataFound({code("PKG 7/ü"), code("SECOND")});
        QVERIFY(waiting());
        QCOMPARE(fake->platform->window().waitText(), QStringLiteral("Kod Okunuyor..."));
        QCOMPARE(fake->http->requests.size(), 1);
        const HttpRequest& sent = fake->http->requests.first();
        QCOMPARE(sent.url, QByteArray("http://127.0.0.1:8470/api/?do=agricultural-pesticide-code/scan"
                                      "&bearer=Bearer%2520tok42&serialNumber=PKG%207/%C3%BC"));
        QCOMPARE(sent.header("Authorization"), QByteArray("Bearer tok42"));
        QCOMPARE(sent.method, QByteArray("GET"));

        fake->run(0);
        QVERIFY(!waiting());
        QVERIFY(!screen->alertView->isHidden());
        QCOMPARE(screen->ilacAdiLabel->text(), QStringLiteral("Tarox 25 EC "));
        QCOMPARE(screen->imgView->imageUrl(), QUrl("http://127.0.0.1:8470/media/tarox.png"));
        QCOMPARE(screen->ilacPuanLabel->text(), QStringLiteral("Bu alımdan 120 puan"));
        QCOMPARE(screen->ilacPuanLabel->markStart(), -1);
        QCOMPARE(screen->purchasePtLabel->text(), QStringLiteral("Kampanya ile +50 puan kazandınız"));
        QCOMPARE(screen->purchasePtLabel->markedText(), QStringLiteral("+50 puan"));

        // A touch on the card keeps it; beside it, the card goes and the camera starts 0.3 s after the touch.
        QVERIFY(!screen->isRunning());
        screen->touchesBegan(screen->alertView);
        QVERIFY(!screen->alertView->isHidden());
        screen->touchesBegan(screen->cameraContainerView);
        QVERIFY(screen->alertView->isHidden());
        fake->clock->advance(299);
        QVERIFY(!screen->isRunning());
        fake->clock->advance(1);
        QVERIFY(screen->isRunning());

        // The same package again is a new request; "Yeni Tarat" hides the card at once.
        screen->metadataFound({code("PKG 7/ü")});
        fake->run(0);
        QCOMPARE(fake->http->requests.size(), 2);
        QVERIFY(!screen->alertView->isHidden());
        screen->yeniTaratButtonTapped();
        QVERIFY(screen->alertView->isHidden());
        fake->run(300);
        QVERIFY(screen->isRunning());
    }

    void pointsRule() {
        ScanViewController screen;
        PointLabel* label = screen.ilacPuanLabel;
        ScanViewController::setPointText(label, "<b>30</b> puan, toplam <b>30</b>");
        QCOMPARE(label->text(), QStringLiteral("30 puan, toplam 30"));
        QCOMPARE(label->markStart(), 0);
        QCOMPARE(label->markLength(), 2);
        // The marked part is looked up again in the cleaned text: its first occurrence is marked.
        ScanViewController::setPointText(label, "Puan 5 ve <b>5</b>");
        QCOMPARE(label->markStart(), 5);
        ScanViewController::setPointText(label, "null");
        QCOMPARE(label->text(), QString());
        QCOMPARE(label->markStart(), -1);
        ScanViewController::setPointText(label, "<b>null</b>");
        QCOMPARE(label->text(), QStringLiteral("null"));
        // No closing tag: the reply broke its promise and the application stops.
        const auto before = fake->endings.size();
        QVERIFY_THROWS_EXCEPTION(FatalStop, ScanViewController::setPointText(label, "Toplam <b>40 puan"));
        QCOMPARE(fake->endings.size(), before + 1);
    }

    void scanFailuresAndRearm() {
        auto* screen = show(new ScanViewController);
        auto scan = [&](const HttpResponse& reply) {
            fake->http->on("agricultural-pesticide-code/scan", reply);
            screen->startRunning();
            screen->metadataFound({code("PKG-9")});
            fake->run(0);
            QVERIFY(!waiting());
            QVERIFY(!screen->isRunning());
            QVERIFY(screen->alertView->isHidden());
        };
        struct Case {
            HttpResponse reply;
            QString title, message;
        };
        const QList<Case> alerts{{jsonReply(warning("Bu kod daha önce kullanılmış.")), "Kod Okunamadı", "Bu kod daha önce kullanılmış."},
                                 {rawReply("<html>502</html>", 502), "Uyarı", "Bilinmeyen bir hata oluştu"}};
        for (const Case& c : alerts) {
            scan(c.reply);
            auto* alert = fake->alert();
            QVERIFY2(alert, qPrintable(c.message));
            QCOMPARE(alert->title(), c.title);
            QCOMPARE(alert->message(), c.message);
            QCOMPARE(alert->buttonTitles(), QStringList{"Tekrar Dene"});
            alert->tapButton(0);
            QVERIFY(screen->isRunning());
        }
        // Silent: no reply, a reply without bytes, a type that is neither; "success" with nothing in it shows.
        for (const HttpResponse& reply : {transportFailure(), rawReply(""), jsonReply(QJsonObject{{"message", "tamam"}})}) {
            scan(reply);
            QVERIFY(!fake->alert());
            screen->touchesBegan(screen->titleView);
            fake->run(300);
            QVERIFY(screen->isRunning());
        }
        fake->http->on("agricultural-pesticide-code/scan", jsonReply(success({})));
        screen->metadataFound({code("PKG-9")});
        fake->run(0);
        QVERIFY(!screen->alertView->isHidden());
        QCOMPARE(screen->ilacAdiLabel->text(), QStringLiteral("null"));
        QCOMPARE(screen->purchasePtLabel->text(), QString());
        QVERIFY(screen->imgView->imageUrl().isEmpty());

        // Signed out: the token's read stops the application.
        fake->store->removeObjectForKey("token");
        screen->startRunning();
        QVERIFY_THROWS_EXCEPTION(FatalStop, screen->metadataFound({code("PKG-9")}));
    }

    void myQrCodeFillsItsViewAndReadsBack() {
        fake->http->on("farmer/qr-code", jsonReply(success({{"qrCode", "EKN-CIFTCI-1001"}})));
        auto* screen = new MyQrCodeViewController;
        screen->qrImage->setFrameSize(QSizeF(300, 210));
        show(screen);
        const HttpRequest& sent = fake->http->requests.first();
        QCOMPARE(sent.url, QByteArray("http://127.0.0.1:8470/api/?do=farmer/qr-code"));
        QCOMPARE(sent.header("Authorization"), QByteArray("tok42"));
        QCOMPARE(sent.timeoutMs, 60000);
        const QImage shown = screen->shownImage();
        QCOMPARE(shown.size(), QSize(300, 210));
        // The image view gets the same picture.
        const QString address = screen->qrImage->imageUrl().toString();
        QVERIFY(address.startsWith("data:image/png;base64,"));
        QCOMPARE(QImage::fromData(QByteArray::fromBase64(address.section(',', 1).toLatin1())).size(), QSize(300, 210));
        const auto read = CodeReader({MetadataObjectType::QRCode}).read(shown);
        QCOMPARE(read.size(), 1);
        QCOMPARE(*read.first().stringValue, QStringLiteral("EKN-CIFTCI-1001"));

        // Non-ASCII makes no code; a missing field is drawn as "null".
        QVERIFY(screen->generateQRCode(QStringLiteral("Çiftçi-1001")).isNull());
        fake->http->on("farmer/qr-code", jsonReply(success({})));
        screen->loadQrCode();
        fake->run(0);
        QCOMPARE(*CodeReader({MetadataObjectType::QRCode}).read(screen->shownImage()).first().stringValue, QStringLiteral("null"));
        // No reply and a body that is not JSON leave the picture as it was.
        for (const HttpResponse& reply : {transportFailure(), rawReply("bakım")}) {
            fake->http->on("farmer/qr-code", reply);
            screen->loadQrCode();
            fake->run(0);
            QVERIFY(!screen->shownImage().isNull());
            QVERIFY(!fake->alert());
        }
    }

    void dealerEntriesChooseTheTypeAndOpenTheQrReading() {
        Storyboard::registerIdentifier("QRScanViewController", [] { return new StandIn; });
        auto* gift = show(new QrGiftViewController);
        QCOMPARE(Transaction::transactionType(), QStringLiteral("award"));
        auto* sale = new BarcodeViewController;
        sale->loadViewIfNeeded();
        QCOMPARE(Transaction::transactionType(), QStringLiteral("sales"));
        gift->openQrScan();
        QVERIFY(dynamic_cast<StandIn*>(gift->presentedViewController()));
        QCOMPARE(gift->presentedViewController()->modalPresentationStyle, 0);
        delete sale;
    }

    void portalOpensWithTheWebToken() {
        service::Roots::LoyaltyPortalBase = "http://127.0.0.1:8470/loyalty";
        fake->http->on("webviewToken", rawReply("Service Unavailable", 503));
        auto* screen = show(new WebViewViewController);
        QCOMPARE(fake->http->requests.first().header("Authorization"), QByteArray("tok42"));
        QCOMPARE(fake->http->requests.first().timeoutMs, 60000);
        auto* alert = fake->alert();
        QVERIFY(alert);
        QCOMPARE(alert->message(), QStringLiteral("Bilinmeyen bir hata oluştu"));
        QCOMPARE(alert->buttonTitles(), QStringList{"Tekrar dene"});

        fake->http->on("webviewToken", jsonReply(success({{"webviewToken", "w+T/9"}})));
        alert->tapButton(0);
        fake->run(0);
        QCOMPARE(fake->http->requests.size(), 2);
        QCOMPARE(screen->webview->url().toString(), QStringLiteral("http://127.0.0.1:8470/loyalty/Login/INdex?token=w+T/9"));
        // The overlay goes on its timer, whatever the page does.
        QVERIFY(waiting());
        fake->clock->advance(1999);
        QVERIFY(waiting());
        fake->clock->advance(1);
        QVERIFY(!waiting());
    }
};

QTEST_MAIN(LoyaltyTest)
#include "tst_loyalty.moc"
