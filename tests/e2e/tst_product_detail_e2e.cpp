// A product's detail and the seed ranges, end to end: the real application in-process, offscreen,
// against the real reference service, walked as a farmer would.

#include "EndToEnd.h"
#include "accounts/DemoAccounts.h"
#include "catalogue/ProductDetailViewController.h"
#include "catalogue/SprayProgramViewController.h"
#include "core/Server.h"
#include "platform/NavigationController.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "seeds/SeedScreens.h"

#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class ProductDetailEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void farmerReadsAProductItsLabelAndCallsTheRepresentative() {
        QList<QUrl> opened;
        startApp([&](platform::Application& application) {
            application.setUrlOpener([&](const QUrl& url) { opened << url; return true; });
            application.setUrlChecker([](const QUrl&) { return true; });
        });
        signIn(server::accounts::demoAccount("farmer").phone);
        openMenu(QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        tap("alertButton");
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        tap("showAllProducts");
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "productCell").size() > 4, 5000);
        tapItem(window(), itemsNamed(window()->contentItem(), "productCell").first());

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
        QTest::qWait(500);
        saveScreenshot(window(), QStringLiteral("product-detail"));

        for (int row = 1; row < 4; ++row) {
            screen->tableView2->selectRow(row);
            QCOMPARE(itemsNamed(window()->contentItem(), "ProductDetail2AfterCell").size(), 1);
            QCOMPARE(screen->tableView2->cellForRow(row).values.value("webViewHeight").toDouble(), screen->contentHeights.value(row) + 16);
        }
        flickToEnd();
        QTest::qWait(800);
        saveScreenshot(window(), QStringLiteral("product-detail-last-section"));

        // The label as a PDF made by the service.
        screen->tableView1->selectRow(0);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "DocumentViewerViewController"), 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Ürün Etiketi"));
        QTRY_VERIFY_WITH_TIMEOUT(answered("/documents/catalogue/"), 15000);
        QTest::qWait(1500);
        saveScreenshot(window(), QStringLiteral("product-detail-label"));
        tap("backButton");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "ProductDetailViewController"), 5000);

        tap("callButton");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        QCOMPARE(itemNamed(window(), "alert")->property("message").toString(),
                 QStringLiteral("Size en yakın Zelmar yetkilisi Serdar Akın aranacaktır. 05301110011 no'lu numara aransın mı?"));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("product-detail-call"));
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
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "allProductCell").size() == 2, 5000);
        QTest::qWait(500);
        saveScreenshot(window(), QStringLiteral("seeds-maize-list"));
        tapItem(window(), itemsNamed(window()->contentItem(), "allProductCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "MaizeDetailAfter2CB").size() == 2, 5000);
        QCOMPARE(itemsNamed(window()->contentItem(), "MaizeDetailAfter2Img").size(), 1);
        QTest::qWait(600);
        saveScreenshot(window(), QStringLiteral("seeds-maize-detail"));
        auto* maize = qobject_cast<seeds::MaizeDetailViewController*>(content()->topViewController());
        QVERIFY(maize);
        maize->tableView2->selectRow(1);
        QTRY_COMPARE(itemsNamed(window()->contentItem(), "MaizeDetailAfter2Img").size(), 0);
        tap("tableView1Cell");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "MaizeDocumentViewController"), 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Çeşit Tanıtım Broşürü"));
        QTRY_VERIFY_WITH_TIMEOUT(answered("/documents/seeds/"), 15000);
        QTest::qWait(1500);
        saveScreenshot(window(), QStringLiteral("seeds-maize-document"));

        openMenu(QStringLiteral("Kanola Tohum Ürünleri  YENİ "));
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "allProductCell").size() == 2, 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Kanola Tohum Ürünleri"));
        tapItem(window(), itemsNamed(window()->contentItem(), "allProductCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "MaizeDetailAfter2CB").size() == 1, 5000);
        auto* canola = qobject_cast<seeds::MaizeDetailViewController*>(content()->topViewController());
        QVERIFY(canola && canola->groupNameLbl->isHidden());
        canola->tableView2->selectRow(2);
        QTRY_COMPARE(itemsNamed(window()->contentItem(), "MaizeDetailAfter2CB").size(), 3);
        QTest::qWait(600);
        saveScreenshot(window(), QStringLiteral("seeds-canola-detail"));
        canola->tableView2->selectRow(1);
        QTRY_COMPARE(itemsNamed(window()->contentItem(), "MaizeDetailAfter2Img").size(), 1);
    }

    void farmerReadsASprayProgramme() {
        startApp();
        signIn(server::accounts::demoAccount("farmer").phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        // From the catalogue's home, past its location alert.
        openMenu(QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        tap("alertButton");
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        tap("showSprayPrograms");
        QTRY_VERIFY_WITH_TIMEOUT(answered("page_166.php"), 5000);
        auto* grid = qobject_cast<catalogue::SprayProgramViewController*>(content()->topViewController());
        QVERIFY(grid);
        QTRY_VERIFY_WITH_TIMEOUT(grid->collectionView->numberOfRows() >= 5, 5000);
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("spray-programmes"));
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "sprayCell").size() >= 5, 5000);
        QTest::qWait(600);
        saveScreenshot(window(), QStringLiteral("spray-programmes"));
        tapItem(window(), itemsNamed(window()->contentItem(), "sprayCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "SprayProgramWebViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(answered("/site/ilaclama-programlari/bugday"), 15000);
        QTest::qWait(1200);
        saveScreenshot(window(), QStringLiteral("spray-programme-page"));
        tap("closeButtonTapped");
        QTRY_VERIFY(!itemNamed(window(), "SprayProgramWebViewController"));
    }

private:
    void openMenu(const QString& label) {
        // Back to the stack's root, where the menu button is.
        for (int i = 0; i < 4 && content() && content()->viewControllers().size() > 1; ++i) {
            tap("backButton");
            QTest::qWait(400);
        }
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "Cell"))
            if (cell->property("content").toMap().value("text").toString() == label) row = cell;
        QVERIFY(row);
        tapItem(window(), row);
        QTRY_VERIFY(!root()->isMenuVisible());
        QTest::qWait(400);
    }
    void flickToEnd() {
        for (QQuickItem* item : itemsNamed(window()->contentItem(), "ProductDetailViewController"))
            for (QQuickItem* child : item->childItems())
                if (child->inherits("QQuickFlickable")) {
                    const double end = child->property("contentHeight").toDouble() - child->height();
                    child->setProperty("contentY", qMax(0.0, end));
                }
    }
    bool answered(const char* fragment) {
        for (const auto& r : service->requests())
            if (r.target.find(fragment) != std::string::npos) return true;
        return false;
    }
};

EKINORA_GUI_TEST_MAIN(ProductDetailEndToEnd)
#include "tst_product_detail_e2e.moc"
