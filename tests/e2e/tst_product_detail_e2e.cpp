// A product's detail, its label and representative, the seed ranges and the spray programmes.

#include "EndToEnd.h"
#include "catalogue/ProductDetailViewController.h"
#include "catalogue/SprayProgramViewController.h"
#include "platform/Storyboard.h"
#include "seeds/SeedScreens.h"

using namespace ekinora;
using namespace ekinora::testing;

class ProductDetailEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void farmerReadsAProductItsLabelAndCallsTheRepresentative() {
        startAppRecordingUrls();
        signIn(server::accounts::demoAccount("farmer").phone);
        openMenu(QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
        dismissAlert();
        tap("showAllProducts");
        QTRY_VERIFY_WITH_TIMEOUT(cells("productCell").size() > 4, 5000);
        tapItem(window(), cells("productCell").first());

        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "ProductDetailViewController"), 5000);
        auto* screen = qobject_cast<catalogue::ProductDetailViewController*>(content()->topViewController());
        QVERIFY(screen);
        QTRY_VERIFY_WITH_TIMEOUT(!screen->measurers.isEmpty(), 5000);
        // Every body measured by its hidden page before the sections table takes its height.
        QTRY_VERIFY_WITH_TIMEOUT(screen->contentHeights.size() == screen->contentStrings.size(), 30000);
        QVERIFY(screen->tableView2Height->constant() > 4 * 56);
        QCOMPARE(screen->tableView2->numberOfRows(), 4);
        QCOMPARE(screen->tableView1->numberOfRows(), 2);
        QTRY_VERIFY(screen->tableView1Height->constant() > 0);
        shoot(QStringLiteral("product-detail"), 500);

        for (int row = 1; row < 4; ++row) {
            screen->tableView2->selectRow(row);
            QCOMPARE(cells("ProductDetail2AfterCell").size(), 1);
            QCOMPARE(screen->tableView2->cellForRow(row).values.value("webViewHeight").toDouble(), screen->contentHeights.value(row) + 16);
        }
        flickToEnd();
        shoot(QStringLiteral("product-detail-last-section"), 800);

        screen->tableView1->selectRow(0);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "DocumentViewerViewController"), 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Ürün Etiketi"));
        QTRY_VERIFY_WITH_TIMEOUT(answered("/documents/catalogue/"), 15000);
        shoot(QStringLiteral("product-detail-label"), 1500);
        tapUntilShown("backButton", "ProductDetailViewController");

        tap("callButton");
        QTRY_COMPARE_WITH_TIMEOUT(alertText(), QStringLiteral("Size en yakın Zelmar yetkilisi Serdar Akın aranacaktır. "
                                                              "05301110011 no'lu numara aransın mı?"), 5000);
        shoot(QStringLiteral("product-detail-call"));
        tap("alertButton"); // "Ara"
        QTRY_COMPARE(opened, QList<QUrl>{QUrl("tel://05301110011")});
    }

    void farmerOpensAMaizeAndACanolaHybrid() {
        startApp();
        signIn(server::accounts::demoAccount("farmer").phone);
        openMenu(QStringLiteral("Mısır Tohum Ürünleri  YENİ "));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "MaizeHomeViewController"), 5000);
        saveScreenshot(window(), QStringLiteral("seeds-maize-home"));
        tap("pg2");
        QTRY_VERIFY_WITH_TIMEOUT(cells("allProductCell").size() == 2, 5000);
        shoot(QStringLiteral("seeds-maize-list"), 500);
        tapItem(window(), cells("allProductCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(cells("MaizeDetailAfter2CB").size() == 2, 5000);
        QCOMPARE(cells("MaizeDetailAfter2Img").size(), 1);
        shoot(QStringLiteral("seeds-maize-detail"), 600);
        auto* maize = qobject_cast<seeds::MaizeDetailViewController*>(content()->topViewController());
        QVERIFY(maize);
        maize->tableView2->selectRow(1);
        QTRY_COMPARE(cells("MaizeDetailAfter2Img").size(), 0);
        tapUntilShown("tableView1Cell", "MaizeDocumentViewController");
        QCOMPARE(content()->topTitle(), QStringLiteral("Çeşit Tanıtım Broşürü"));
        QTRY_VERIFY_WITH_TIMEOUT(answered("/documents/seeds/"), 15000);
        shoot(QStringLiteral("seeds-maize-document"), 1500);

        // Back to the stack's root, where the menu button is.
        for (int i = 0; i < 4 && content()->viewControllers().size() > 1; ++i) {
            tap("backButton");
            QTest::qWait(400);
        }
        openMenu(QStringLiteral("Kanola Tohum Ürünleri  YENİ "));
        QTRY_VERIFY_WITH_TIMEOUT(cells("allProductCell").size() == 2, 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Kanola Tohum Ürünleri"));
        tapItem(window(), cells("allProductCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(cells("MaizeDetailAfter2CB").size() == 1, 5000);
        auto* canola = qobject_cast<seeds::MaizeDetailViewController*>(content()->topViewController());
        QVERIFY(canola && canola->groupNameLbl->isHidden());
        canola->tableView2->selectRow(2);
        QTRY_COMPARE(cells("MaizeDetailAfter2CB").size(), 3);
        shoot(QStringLiteral("seeds-canola-detail"), 600);
        canola->tableView2->selectRow(1);
        QTRY_COMPARE(cells("MaizeDetailAfter2Img").size(), 1);
    }

    void farmerReadsASprayProgramme() {
        startApp();
        signInAs("farmer");
        openMenu(QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
        dismissAlert();
        tap("showSprayPrograms");
        QTRY_VERIFY_WITH_TIMEOUT(answered("page_166.php"), 5000);
        auto* grid = qobject_cast<catalogue::SprayProgramViewController*>(content()->topViewController());
        QVERIFY(grid);
        QTRY_VERIFY_WITH_TIMEOUT(grid->collectionView->numberOfRows() >= 5, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(cells("sprayCell").size() >= 5, 5000);
        shoot(QStringLiteral("spray-programmes"), 600);
        tapUntilShown(cells("sprayCell").first(), "SprayProgramWebViewController");
        QTRY_VERIFY_WITH_TIMEOUT(answered("/site/ilaclama-programlari/bugday"), 15000);
        shoot(QStringLiteral("spray-programme-page"), 1200);
        tapUntilGone("closeButtonTapped", "SprayProgramWebViewController");
    }

private:
    void flickToEnd() {
        for (QQuickItem* item : cells("ProductDetailViewController"))
            for (QQuickItem* child : item->childItems())
                if (child->inherits("QQuickFlickable")) {
                    const double end = child->property("contentHeight").toDouble() - child->height();
                    child->setProperty("contentY", qMax(0.0, end));
                }
    }
};

EKINORA_GUI_TEST_MAIN(ProductDetailEndToEnd)
#include "tst_product_detail_e2e.moc"
