// The product detail against scripted replies: bodies built from blocks and measured by hidden pages,
// the open section's height and entry, documents, media and the representative call of both details.

#include "FakePlatform.h"
#include "catalogue/CatalogueRequests.h"
#include "catalogue/DetailTree.h"
#include "catalogue/DocumentViewers.h"
#include "catalogue/ProductDetailViewController.h"
#include "catalogue/RegionAttendantCall.h"
#include "catalogue/SprayProgramViewController.h"
#include "service/ServiceRoots.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"
#include "platform/Window.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace ekinora;
using namespace ekinora::catalogue;
using namespace ekinora::testing;

namespace {

QJsonObject block(const QString& type, const QString& key, const QJsonArray& lines) {
    return {{"type", type}, {"data", QJsonObject{{key, lines}}}};
}
QJsonObject section(const QString& header, const QJsonArray& blocks) { return {{"header", header}, {"data", blocks}}; }
QJsonObject detail(const QJsonArray& contents, const QJsonArray& media = {}) {
    return {{"status", 200},
            {"data", QJsonObject{{"group", "Fungisit"}, {"title", "Ilgaz 250 SC"}, {"path", "http://svc.test/p.svg"},
                                 {"specialities", QJsonObject{{"activeSubstance", "250 g/l Azoksistrobin"}}},
                                 {"contents", contents}, {"media", media},
                                 {"documents", QJsonArray{QJsonObject{{"extra", "Ürün Etiketi"}, {"path", "http://svc.test/etiket.pdf"}}}}}}};
}
HttpResponse reply(const QJsonObject& o) { return jsonReply(o); }

const QJsonArray TwoSections{
    section("Ürün Hakkında", {block("headline", "headline", {"Fungisit"}), block("paragraph", "paragraph", {"Bir", "İki"})}),
    section("Kullanım", {block("table", "table", {"<table class=\\\"k\\\"><tr><td>Buğday</td></tr></table>"})})};

} // namespace

class ProductDetailTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        productDetailJSON().reset();
        documentPath() = documentTitle() = QString("");
        selectedProductId() = "1001";
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        platform::Storyboard::registerIdentifier("DocumentViewerSB", [] { return new DocumentViewerViewController; });
    }
    void cleanup() { delete fake; }

    void blocksBecomeOneEntryPerBlockWithTheBlocksSoFar() {
        const QJsonObject tree{{"data", QJsonObject{{"contents", QJsonArray{
            section("A", {block("paragraph", "paragraph", {"p"}), block("list", "list", {"x", "y"}),
                          block("image", "image", {}), block("table", "table", {"<td a=\\\"1\\\">t</td>"}),
                          block("headline", "headline", {"h"})})}}}}};
        const QStringList s = buildContentStrings(tree);
        QCOMPARE(s, (QStringList{"<p>p</p>", "<p>p</p><li>x</li><li>y</li>", "<p>p</p><li>x</li><li>y</li>",
                                 "<td a=\"1\">t</td>", "<td a=\"1\">t</td><h3>h</h3>"}));
        QVERIFY(htmlPage("b", 343).contains("content=\"width=343.0, initial-scale=1"));
        QVERIFY(htmlPage("b", 343.5).contains("width=343.5,"));
        // A nil text where a line should be stops the application.
        const QJsonObject broken{{"data", QJsonObject{{"contents", QJsonArray{section("A", {block("list", "list", {1})})}}}}};
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, buildContentStrings(broken));
    }

    void sectionsOpenOneAtATimeOnceEveryBodyIsMeasured() {
        fake->http->on("productCatalog/product-detail", reply(detail(TwoSections)));
        auto* screen = mount();
        QVERIFY(fake->http->requestsFor("productCatalog/product-detail").first().url.endsWith("&id=1001"));
        QCOMPARE(screen->productNameLbl->text(), QStringLiteral("Fungisit"));
        QCOMPARE(screen->productMatterLbl->text(), QStringLiteral("250 g/l Azoksistrobin"));
        QCOMPARE(screen->collectionViewHeight->constant(), 0.0); // no media
        QCOMPARE(screen->contentStrings.size(), 3);              // one per block
        QCOMPARE(screen->measurers.size(), 3);
        QCOMPARE(screen->tableView2->cellForRow(0).reuseIdentifier, QStringLiteral("ProductDetail2AfterCell"));
        QCOMPARE(screen->tableView2Height->constant(), 0.0); // not before every body is measured

        measure(screen, {100, 180, 60});
        QCOMPARE(screen->contentHeights.size(), 3);
        QCOMPARE(screen->tableView2->cellForRow(0).values.value("webViewHeight").toDouble(), 116.0);
        QCOMPARE(screen->tableView2Height->constant(), 56 + 116 + 56.0);

        screen->tableView2->selectRow(1);
        QCOMPARE(screen->selectedIndex, 1);
        QCOMPARE(screen->tableView2->cellForRow(0).reuseIdentifier, QStringLiteral("ProductDetail2BeforeCell"));
        // The second entry is the first section's second block: the mapping goes by row.
        QVERIFY(screen->openSectionWebView->html().contains("<h3>Fungisit</h3><p>Bir</p><p>İki</p>"));
        QCOMPARE(screen->tableView2->cellForRow(1).values.value("webViewHeight").toDouble(), 196.0);
        fake->run(300);
        QCOMPARE(screen->tableView1Height->constant(), 56 + 15.0);

        screen->tableView1->selectRow(0);
        QCOMPARE(documentPath(), QStringLiteral("http://svc.test/etiket.pdf"));
        auto* viewer = qobject_cast<DocumentViewerViewController*>(screen->navigationController()->topViewController());
        QVERIFY(viewer);
        fake->run(0);
        QCOMPARE(viewer->title(), QStringLiteral("Ürün Etiketi"));
        QCOMPARE(viewer->webView->url(), QUrl("http://svc.test/etiket.pdf"));
    }

    void mediaShowsPicturesAndPlayMarks() {
        const QJsonArray media{QJsonObject{{"type", "image"}, {"path", "http://svc.test/a.jpg"}},
                               QJsonObject{{"type", "video"}, {"path", "http://svc.test/v.mp4"}, {"extraFilePath", "http://svc.test/v.jpg"}}};
        fake->http->on("productCatalog/product-detail", reply(detail({}, media)));
        auto* screen = mount();
        QVERIFY(screen->measurers.isEmpty());
        QCOMPARE(screen->tableView2Height->constant(), 0.0); // no sections: left alone
        QVERIFY(screen->collectionViewHeight->constant() > 0);
        QCOMPARE(screen->collectionView->cellForRow(1).values.value("imgView").toString(), QStringLiteral("http://svc.test/v.jpg"));
        QVERIFY(screen->collectionView->cellForRow(1).values.value("playImg").toBool());
        QVERIFY(!screen->collectionView->cellForRow(0).values.value("playImg").toBool());
        screen->collectionView->selectRow(0);
        QVERIFY(!screen->fullImageView->isHidden());
        screen->closeImageButton->sendActions();
        QVERIFY(screen->fullImageView->isHidden());
        screen->collectionView->selectRow(1);
        fake->run(1000);
        auto* player = qobject_cast<PlayerViewController*>(fake->platform->window().presentedControllers().value(0));
        QVERIFY(player && player->playing());
    }

    void failedLoadsAndBadAddresses() {
        fake->http->on("productCatalog/product-detail", transportFailure());
        mount();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bilinmeyen bir hata oluştu"));
        // Both viewers stop on an address that is empty or has blanks.
        documentPath() = "http://svc.test/a b.pdf";
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, DocumentViewerViewController().viewDidLoad());
        MaizeDocumentViewController maize;
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, maize.viewDidLoad());
        maize.url = "http://svc.test/b.pdf";
        maize.viewDidLoad();
    }

    void theRepresentativeIsRungOnlyAfterConfirmation() {
        QList<QUrl> opened;
        bool canRing = true;
        fake->platform->application().setUrlOpener([&](const QUrl& u) { opened << u; return true; });
        fake->platform->application().setUrlChecker([&](const QUrl&) { return canRing; });
        fake->http->on("productCatalog/product-detail", reply(detail({})));
        auto* screen = mount();

        fake->http->on("productCatalog/region-attendant",
                       reply({{"message", QJsonObject{{"type", "warning"}}}, {"data", QJsonObject{}}}));
        screen->callButton();
        QCOMPARE(fake->platform->window().waitText(), QStringLiteral("Yetkili Bulunuyor"));
        fake->run(0);
        QVERIFY(!fake->platform->window().waitVisible());
        QCOMPARE(fake->alert()->buttonTitles(), QStringList{"tamam"});
        fake->alert()->tapButton(0);
        fake->run(0);

        fake->http->on("productCatalog/region-attendant",
                       reply({{"message", QJsonObject{{"type", "success"}}},
                              {"data", QJsonObject{{"fullname", "Kemal Öztürk"}, {"phonenumber", "05321234567"}}}}));
        screen->callButton();
        fake->run(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Size en yakın Zelmar yetkilisi Kemal Öztürk aranacaktır. "
                                                          "05321234567 no'lu numara aransın mı?"));
        QCOMPARE(fake->alert()->buttonTitles(), (QStringList{"Ara", "Vazgeç"}));
        fake->alert()->tapButton(1);
        fake->run(0);
        QVERIFY(opened.isEmpty());
        screen->callButton();
        fake->run(0);
        fake->alert()->tapButton(0);
        QCOMPARE(opened, QList<QUrl>{QUrl("tel://05321234567")});

        // A device that cannot ring, and a number with a blank: nothing happens.
        canRing = false;
        placeCall("05321234567");
        canRing = true;
        placeCall("0532 123 45 67");
        QCOMPARE(opened.size(), 1);

        // No network: the overlay stays.
        fake->http->on("productCatalog/region-attendant", transportFailure());
        screen->callButton();
        fake->run(0);
        QVERIFY(fake->platform->window().waitVisible());
    }

    void sprayProgrammesOpenTheirPageWithTheTitle() {
        platform::Storyboard::registerIdentifier("SprayProgramWebSB", [] { return new SprayProgramWebViewController; });
        const QString site = service::Roots::ProductSiteBase;
        fake->http->on(QUrl(site).path() + "/scripts/components/product_groups/page_166.php",
                       jsonReply(QJsonArray{QJsonObject{{"title", "Buğday İlaçlama Programı"}, {"image", "/static/b.svg"}, {"link", "/p/bugday"}},
                                            QJsonObject{{"title", "Mısır"}, {"image", "static/m.svg"}, {"link", "/p/misir"}}}));
        auto* screen = mount(new SprayProgramViewController);
        QCOMPARE(screen->collectionView->numberOfRows(), 2);
        QVERIFY(fake->http->requests.last().header("Authorization").isEmpty()); // no token
        // The joining adds nothing: an image without its leading "/" gives a wrong address.
        QCOMPARE(screen->collectionView->cellForRow(1).values.value("imgView").toString(), site + "static/m.svg");
        screen->collectionView->selectRow(0);
        fake->run(0);
        QCOMPARE(sprayUrl(), site + "/p/bugday");
        auto* page = qobject_cast<SprayProgramWebViewController*>(fake->platform->window().presentedControllers().value(0));
        QVERIFY(page);
        QCOMPARE(page->navBar->text(), QStringLiteral("Buğday İlaçlama Programı"));
        QCOMPARE(page->webView->url(), QUrl(site + "/p/bugday"));
        QCOMPARE(documentPath(), QStringLiteral("Buğday İlaçlama Programı")); // until a document overwrites it
    }

private:
    template <class T = ProductDetailViewController> T* mount(T* screen = new T) {
        auto* nav = new platform::NavigationController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    // Each hidden page finishes and answers its two scripts.
    void measure(ProductDetailViewController* screen, const QList<double>& heights) {
        for (int n = heights.size() - 1; n >= 0; --n) { // any order
            auto* web = screen->measurers.at(n);
            web->navigationFinished();
            web->scriptFinished(1, "complete");
            web->scriptFinished(2, heights.at(n));
        }
    }
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(ProductDetailTest)
#include "tst_product_detail.moc"
