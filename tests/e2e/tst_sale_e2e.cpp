// The demo dealer reads the demo farmer's code, adds packages, removes one by scanning it and confirms;
// the farmer's balance rises by what was sold. A code already on the list and one already sold are
// refused.

#include "EndToEnd.h"
#include "loyalty/Transaction.h"
#include "platform/Capture.h"
#include "platform/Storyboard.h"

using namespace ekinora;
using namespace ekinora::testing;
using loyalty::Transaction;

class SaleEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        // The printed demo codes come with the service's sale commands.
        if (!QFile::exists(codeImage("farmer-qr"))) QSKIP("the service's printed demo codes are not in this tree");
        startStoredService();
        platform::DevelopmentCamera::install(QString());
    }
    void cleanup() {
        stopAll();
        platform::DevelopmentCamera::uninstall();
    }

    void saleWithARemovalCreditsTheFarmer() {
        const qint64 before = balance();
        openFarmerReading("sales");
        saveScreenshot(window(), QStringLiteral("sale-farmer-read"));
        tapAlertButton(QStringLiteral("Ürün Okutun"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "BarcodeScanProductViewController"), 5000);

        addPackage("package-01-qr", QString());
        saveScreenshot(window(), QStringLiteral("sale-product-card"));
        QVERIFY(!itemNamed(window(), "closeButton")->isEnabled());
        addPackage("package-02-qr", QStringLiteral("scanNewProductButtonTapped"));
        // The same package again, then one sold before: the service's words head the alert.
        refused("package-02-qr", QStringLiteral("scanNewProductButtonTapped"), QStringLiteral("Bu ürün kodu zaten listenizde."));
        refused("package-16-sold-qr", QStringLiteral("Tekrar Dene"), QStringLiteral("Bu ürün daha önce satılmış."));
        addPackage("package-03-qr", QStringLiteral("Tekrar Dene"));
        tap("continueButtonTapped");
        QTRY_COMPARE_WITH_TIMEOUT(cells("barcodeCell").size(), 3, 5000);
        shootSettled(QStringLiteral("sale-list"), 500);

        tapUntilShown("eraseLabel", "ProductsListEraseViewController");
        show("package-02-qr");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "removeButtonTapped"), 5000);
        shootSettled(QStringLiteral("sale-remove-card"), 500);
        tapUntilGone("removeButtonTapped", "ProductsListEraseViewController");
        QTRY_COMPARE_WITH_TIMEOUT(cells("barcodeCell").size(), 2, 5000);

        confirm();
        QTRY_VERIFY_WITH_TIMEOUT(alertText().startsWith(QStringLiteral("Satış onaylandı.")), 5000);
        QCOMPARE(balance() - before, points("package-01") + points("package-03"));
        QVERIFY(points("package-01") > 0);
        tapAlertButton(QStringLiteral("Tamam"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "ProductListViewController"), 5000);
        QVERIFY(app->platform().window().presentedControllers().isEmpty());
    }

    void giftGoesTheSameRoadWithoutPoints() {
        const qint64 before = balance();
        openFarmerReading("award");
        tapAlertButton(QStringLiteral("Ürün Okutun"));
        addPackage("package-04-qr", QString());
        tap("continueButtonTapped");
        QTRY_COMPARE_WITH_TIMEOUT(cells("barcodeCell").size(), 1, 5000);
        confirm();
        QTRY_VERIFY_WITH_TIMEOUT(alertText().startsWith(QStringLiteral("Hediye onaylandı.")), 5000);
        QCOMPARE(balance(), before);
        const auto gift = db().queryRow("SELECT reason FROM loyalty_ledger WHERE serial = ?", {serial("package-04")});
        QVERIFY(gift);
        QCOMPARE(QString::fromStdString(gift->at("reason").get<std::string>()), QStringLiteral("award"));
    }

private:
    static QString codeImage(const char* name) {
        return sourceFile(QStringLiteral("../../demo/codes/%1.png").arg(QLatin1String(name)));
    }
    // The serial a printed package carries, as the demo codes' list gives it.
    static std::string serial(const char* package) {
        static const QHash<QString, std::string> serials{{"package-01", "8693875252180"}, {"package-03", "8691623661963"},
                                                         {"package-04", "8695497866851"}};
        return serials.value(QString::fromLatin1(package));
    }
    std::int64_t farmerId() {
        return db().queryRow("SELECT id FROM users WHERE phone = ?", {server::accounts::demoAccount("farmer").phone})->at("id").get<std::int64_t>();
    }
    qint64 balance() {
        return db().queryRow("SELECT COALESCE(SUM(points), 0) AS total FROM loyalty_ledger WHERE user_id = ?", {farmerId()})
            ->at("total").get<std::int64_t>();
    }
    qint64 points(const char* package) {
        return db().queryRow("SELECT COALESCE(l.points + l.campaign_points, 0) AS points FROM package_codes c"
                             " LEFT JOIN loyalty_products l ON l.product_id = c.product_id WHERE c.serial = ?",
                             {serial(package)})
            ->at("points").get<std::int64_t>();
    }

    // Signed in as the demo dealer, the entry screen's choice made, the farmer's code read.
    void openFarmerReading(const char* type) {
        startApp();
        signInAs("dealer");
        settle(500);
        Transaction::transactionType() = QString::fromLatin1(type);
        auto* scan = platform::Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("QRScanViewController"));
        QVERIFY(scan);
        content()->topViewController()->presentViewController(scan, true);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "QRScanViewController"), 5000);
        show("farmer-qr");
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), QStringLiteral("Çiftçi Başarıyla Okundu"), 8000);
    }
    void show(const char* name) { platform::DevelopmentCamera::current()->showFile(codeImage(name)); }
    // The package goes in front of the lens, then the button that starts the camera again.
    void addPackage(const char* name, const QString& rearm) {
        show(name);
        rearmWith(rearm);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "continueButtonTapped"), 8000);
        QQuickItem* label = itemNamed(window(), "ilacAdiLabel");
        QVERIFY(label && !label->property("text").toString().isEmpty());
        settle(500);
    }
    void refused(const char* name, const QString& rearm, const QString& title) {
        show(name);
        rearmWith(rearm);
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), title, 8000);
        QCOMPARE(alertText(), QStringLiteral("Lütfen Tekrar Deneyiniz"));
    }
    void rearmWith(const QString& rearm) {
        if (rearm == QStringLiteral("Tekrar Dene")) tapAlertButton(rearm);
        else if (!rearm.isEmpty()) tap(rearm.toLatin1().constData());
    }
    void confirm() {
        tap("completeProcessButtonTapped");
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), QStringLiteral("İşlemi Onaylamak İstiyor Musunuz ?"), 5000);
        tapAlertButton(QStringLiteral("Onayla"));
    }
};

EKINORA_GUI_TEST_MAIN(SaleEndToEnd)
#include "tst_sale_e2e.moc"
