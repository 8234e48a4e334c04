// A package scanned through the development camera is credited once, the farmer's own QR code reads
// back to his code, and the club member's portal opens on her balance with what she scanned.

#include "EndToEnd.h"
#include "loyalty/ScanViewController.h"
#include "platform/Capture.h"
#include "platform/WebView.h"

using namespace ekinora;
using namespace ekinora::testing;

class LoyaltyEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startStoredService();
        platform::DevelopmentCamera::install(QString());
    }
    void cleanup() {
        stopAll();
        platform::DevelopmentCamera::uninstall();
    }

    void farmerScansAPackageOnceAndShowsHisCode() {
        const auto& farmer = server::accounts::demoAccount("farmer");
        startApp();
        signIn(farmer.phone);
        openMenu(QStringLiteral("Ürün Tarat  YENİ "), "ScanViewController");

        // The package in front of the lens: one request, the card with the product and its points.
        const QString serial = QStringLiteral("8693875252180");
        platform::DevelopmentCamera::current()->showFile(sourceFile(QStringLiteral("../../demo/codes/package-01-qr.png")));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alertView"), 10000);
        QCOMPARE(scans(serial), 1);
        QVERIFY(!textOf("ilacAdiLabel").isEmpty() && !textOf("ilacAdiLabel").contains("<sup>"));
        QVERIFY(QRegularExpression("^Bu üründen \\d+ puan kazandınız$").match(textOf("ilacPuanLabel")).hasMatch());
        auto* screen = qobject_cast<loyalty::ScanViewController*>(content()->topViewController());
        QVERIFY(screen);
        QVERIFY(QRegularExpression("^\\d+ puan$").match(screen->ilacPuanLabel->markedText()).hasMatch());
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "waitOverlay"), 5000);
        shoot(QStringLiteral("loyalty-scan-card"), 600);
        QCOMPARE(credits(serial, farmer.phone), 1);

        // Scanning it again: the service's answer, and still one credit.
        tap("yeniTaratButtonTapped");
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), QStringLiteral("Kod Okunamadı"), 10000);
        QVERIFY(alertText().contains(QStringLiteral("daha önce")));
        QCOMPARE(scans(serial), 2);
        QCOMPARE(credits(serial, farmer.phone), 1);
        platform::DevelopmentCamera::current()->show(QImage());
        QTest::qWait(300); // the alert has settled in place
        dismissAlert();

        // His own code, as a dealer's camera would read it off the screen.
        openMenu(QStringLiteral("QR Kodum  YENİ "), "MyQrCodeViewController");
        QQuickItem* image = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((image = itemNamed(window(), "qrImage")) && image->property("status").toInt() == 1, 5000);
        shoot(QStringLiteral("loyalty-my-qr-code"));
        const QRectF area = image->mapRectToScene(QRectF(-16, -16, image->width() + 32, image->height() + 32));
        const QImage shot = window()->grabWindow().copy(area.toRect());
        const auto read = platform::CodeReader({platform::MetadataObjectType::QRCode}).read(shot);
        QCOMPARE(read.size(), 1);
        QCOMPARE(*read.first().stringValue, QStringLiteral("EKNQ4D1F7A2C9B3E5F60"));
    }

    void clubMemberOpensThePortalOnHerBalance() {
        const auto& member = server::accounts::demoAccount("loyalty");
        startApp();
        signIn(member.phone);
        // First run: the invitation is put off, and a package scanned.
        dismissAlert(1);
        openMenu(QStringLiteral("Ürün Tarat  YENİ "), "ScanViewController");
        platform::DevelopmentCamera::current()->showFile(sourceFile(QStringLiteral("../../demo/codes/package-02-qr.png")));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alertView"), 10000);
        const QString product = textOf("ilacAdiLabel");

        // Second run: the invitation leads to the club.
        restartApp();
        tapAlertButton(QStringLiteral("Bereket Kulübü"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "WebViewViewController"), 5000);
        QTRY_COMPARE(topIdentifier(), QStringLiteral("loyaltyVC"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "waitOverlay"), 5000);

        const qint64 balance = db().scalar(
            "SELECT COALESCE(SUM(points), 0) FROM loyalty_ledger WHERE user_id = (SELECT id FROM users WHERE phone = ?)",
            {member.phone});
        QString page;
        QTRY_VERIFY_WITH_TIMEOUT((page = pageText()).contains(QStringLiteral("Toplam puanınız")), 20000);
        QVERIFY(balance > 0);
        QVERIFY2(page.contains(QStringLiteral("%1 puan").arg(balance)) && QString(page).remove(u'®').contains(product), qPrintable(page));
        QVERIFY(page.contains(QString::fromStdString(member.fullname)));
        // The overlay went on its own timer.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "waitOverlay"), 5000);
        shoot(QStringLiteral("loyalty-portal"), 400);
    }

private:
    int scans(const QString& serial) const {
        return int(requestsWith("serialNumber=" + serial.toStdString()).size());
    }
    qint64 credits(const QString& serial, const std::string& phone) {
        return db().scalar(
            "SELECT COUNT(*) FROM loyalty_ledger WHERE serial = ? AND user_id = (SELECT id FROM users WHERE phone = ?)",
            {serial.toStdString(), phone});
    }

    QString pageText() {
        auto* web = content()->topViewController()->findChild<platform::WebView*>(QStringLiteral("webview"));
        if (!web) return {};
        QString out;
        bool done = false;
        web->evaluateJavaScript(QStringLiteral("document.body ? document.body.innerText : ''"), [&](const QVariant& v) {
            out = v.toString();
            done = true;
        });
        for (int i = 0; i < 50 && !done; ++i) QTest::qWait(20);
        return out;
    }
};

EKINORA_GUI_TEST_MAIN(LoyaltyEndToEnd)
#include "tst_loyalty_e2e.moc"
