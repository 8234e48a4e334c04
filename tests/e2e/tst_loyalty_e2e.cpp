// Loyalty end to end: the real application in-process, offscreen, against the real reference service.
// The farmer scans a package through the development camera and sees the product and its points, the
// service credits the code once, his own QR code reads back to his code, and the club member's portal
// opens on her balance with what she scanned.

#include "EndToEnd.h"
#include "accounts/DemoAccounts.h"
#include "core/Database.h"
#include "loyalty/ScanViewController.h"
#include "platform/Capture.h"
#include "platform/WebView.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace ekinora;
using namespace ekinora::testing;

class LoyaltyEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        server::ServerOptions options;
        options.dbPath = dbDir.filePath(QStringLiteral("service.db")).toStdString();
        QFile::remove(QString::fromStdString(options.dbPath));
        startService(options);
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
        openFromMenu(QStringLiteral("Ürün Tarat"), "ScanViewController");

        // The package in front of the lens: one request, the card with the product and its points.
        const QString serial = QStringLiteral("8693875252180");
        platform::DevelopmentCamera::current()->showFile(sourceFile(QStringLiteral("../../demo/codes/package-01-qr.png")));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alertView"), 10000);
        QCOMPARE(scans(serial), 1);
        QVERIFY(!text("ilacAdiLabel").isEmpty() && !text("ilacAdiLabel").contains("<sup>"));
        QVERIFY(QRegularExpression("^Bu üründen \\d+ puan kazandınız$").match(text("ilacPuanLabel")).hasMatch());
        auto* screen = qobject_cast<loyalty::ScanViewController*>(content()->topViewController());
        QVERIFY(screen);
        QVERIFY(QRegularExpression("^\\d+ puan$").match(screen->ilacPuanLabel->markedText()).hasMatch());
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "waitOverlay"), 5000);
        QTest::qWait(600);
        saveScreenshot(window(), QStringLiteral("loyalty-scan-card"));
        QCOMPARE(credits(serial, farmer.phone), 1);

        // Scanning it again: the service's answer, and still one credit.
        tap("yeniTaratButtonTapped");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 10000);
        QQuickItem* alert = itemNamed(window(), "alert");
        QCOMPARE(alert->property("title").toString(), QStringLiteral("Kod Okunamadı"));
        QVERIFY(alert->property("message").toString().contains(QStringLiteral("daha önce")));
        QCOMPARE(scans(serial), 2);
        QCOMPARE(credits(serial, farmer.phone), 1);
        platform::DevelopmentCamera::current()->show(QImage());
        QTest::qWait(300); // the alert has settled in place
        tapItem(window(), itemsNamed(alert, "alertButton").first());
        QTRY_VERIFY(!itemNamed(window(), "alert"));

        // His own code, as a dealer's camera would read it off the screen.
        openFromMenu(QStringLiteral("QR Kodum"), "MyQrCodeViewController");
        QQuickItem* image = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((image = itemNamed(window(), "qrImage")) && image->property("status").toInt() == 1, 5000);
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("loyalty-my-qr-code"));
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
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        tapItem(window(), itemsNamed(itemNamed(window(), "alert"), "alertButton").at(1));
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        openFromMenu(QStringLiteral("Ürün Tarat"), "ScanViewController");
        platform::DevelopmentCamera::current()->showFile(sourceFile(QStringLiteral("../../demo/codes/package-02-qr.png")));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alertView"), 10000);
        const QString product = text("ilacAdiLabel");

        // Second run: the invitation leads to the club.
        restartApp();
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        tapItem(window(), itemsNamed(itemNamed(window(), "alert"), "alertButton").at(0));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "WebViewViewController"), 5000);
        QTRY_COMPARE(topIdentifier(), QStringLiteral("loyaltyVC"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "waitOverlay"), 5000);

        const qint64 balance = server::Database(dbPath()).scalar(
            "SELECT COALESCE(SUM(points), 0) FROM loyalty_ledger WHERE user_id = (SELECT id FROM users WHERE phone = ?)",
            {member.phone});
        QString page;
        QTRY_VERIFY_WITH_TIMEOUT((page = pageText()).contains(QStringLiteral("Toplam puanınız")), 20000);
        QVERIFY(balance > 0);
        QVERIFY2(page.contains(QStringLiteral("%1 puan").arg(balance)) && QString(page).remove(u'®').contains(product), qPrintable(page));
        QVERIFY(page.contains(QString::fromStdString(member.fullname)));
        // The overlay went on its own timer.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "waitOverlay"), 5000);
        QTest::qWait(400);
        saveScreenshot(window(), QStringLiteral("loyalty-portal"));
    }

private:
    std::string dbPath() const { return dbDir.filePath(QStringLiteral("service.db")).toStdString(); }

    int scans(const QString& serial) const {
        int n = 0;
        for (const auto& r : service->requests())
            if (QString::fromStdString(r.target).contains(QStringLiteral("serialNumber=") + serial)) ++n;
        return n;
    }
    qint64 credits(const QString& serial, const std::string& phone) const {
        return server::Database(dbPath()).scalar(
            "SELECT COUNT(*) FROM loyalty_ledger WHERE serial = ? AND user_id = (SELECT id FROM users WHERE phone = ?)",
            {serial.toStdString(), phone});
    }

    QString text(const char* name) const {
        QQuickItem* item = itemNamed(window(), name);
        return item ? item->property("text").toString() : QString();
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

    void openFromMenu(const QString& label, const char* screen) {
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "Cell"))
            if (cell->property("content").toMap().value("text").toString().startsWith(label)) row = cell;
        QVERIFY2(row, qPrintable(label));
        for (QQuickItem* up = row->parentItem(); up; up = up->parentItem())
            if (up->inherits("QQuickFlickable")) {
                const double bottom = up->property("contentHeight").toDouble() - up->height();
                up->setProperty("contentY", std::max(0.0, std::min(row->y() - 100, bottom)));
                break;
            }
        QTest::qWait(200);
        tapItem(window(), row);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), screen), 5000);
        QTRY_VERIFY(!root()->isMenuVisible());
        QTest::qWait(400);
    }

    static QString sourceFile(const QString& relative) {
        const QFileInfo self(QStringLiteral(__FILE__));
        const QString folder = self.isAbsolute() ? self.path()
                                                 : QCoreApplication::applicationDirPath() + QStringLiteral("/../") + self.path();
        return QDir(folder).filePath(relative);
    }

    QTemporaryDir dbDir;
};

EKINORA_GUI_TEST_MAIN(LoyaltyEndToEnd)
#include "tst_loyalty_e2e.moc"
