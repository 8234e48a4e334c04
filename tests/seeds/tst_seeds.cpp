// The seed ranges against scripted replies: which path the menu's range and the group give, labels
// that change places during a search, and the cards that an open maize or canola section is made of.

#include "FakePlatform.h"
#include "catalogue/CatalogueState.h"
#include "catalogue/DocumentViewers.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"
#include "seeds/SeedScreens.h"

#include <QJsonArray>
#include <QTest>

using namespace ekinora;
using namespace ekinora::seeds;
using namespace ekinora::testing;

namespace {

QJsonObject hybrid(int id, const QString& title, const QString& group) {
    return {{"id", id}, {"title", title}, {"group", group}, {"image", "http://svc.test/s.svg"}};
}
QJsonObject list(const QJsonArray& data) { return {{"status", 200}, {"message", ""}, {"errors", ""}, {"data", data}}; }
QJsonObject typed(const QString& type, const QJsonObject& data) { return {{"type", type}, {"data", data}}; }
QJsonObject image(const QString& src) { return typed("image", {{"image", QJsonObject{{"src", src}}}}); }
QJsonObject box(const QString& title) {
    return typed("contentBox", {{"contentBox", QJsonObject{{"title", title}, {"description", "d"}, {"src", "http://svc.test/c.svg"}}}});
}
QJsonObject para(const QString& t) { return typed("paragraph", {{"paragraph", QJsonArray{t}}}); }
QJsonObject head(const QString& t) { return typed("headline", {{"headline", QJsonArray{t}}}); }
QJsonObject sectionOf(const QJsonArray& blocks) { return {{"header", "Bölüm"}, {"data", blocks}}; }

} // namespace

class SeedsTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        catalogue::maizeProducts().reset();
        catalogue::maizeDetailJSON().reset();
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        registerScreens();
        platform::Storyboard::registerIdentifier("MaizeDocSB", [] { return new catalogue::MaizeDocumentViewController; });
        fake->http->on("productCatalog/products", jsonReply(list({hybrid(5003, "Altınkoçan 650", "Danelik Mısır"),
                                                                 hybrid(5004, "Harmanyeri 600", "Danelik Mısır"),
                                                                 hybrid(5005, "Erkenci 450", "Erkenci Mısır")})));
    }
    void cleanup() { delete fake; }

    void theRangeAndTheGroupChooseThePath() {
        fake->store->setString("maizeCanola", "maize");
        auto* home = new MaizeHomeViewController;
        mount(home);
        home->pg2Tapped();
        fake->run(0);
        auto* screen = qobject_cast<MaizeAllViewController*>(home->navigationController()->topViewController());
        QVERIFY(screen);
        QVERIFY(fake->http->requestsFor("productCatalog/products").last().url.endsWith("catalog=maize-catalog&pgroup=363"));
        QVERIFY(screen->leftBarButtonRemoved);

        // Canola ignores the group; an unknown range asks the bare root.
        fake->store->setString("maizeCanola", "canola");
        screen->id = "362";
        screen->loadProducts();
        QVERIFY(fake->http->requestsFor("productCatalog/products").last().url.endsWith("/?do=productCatalog/products&catalog=canola-catalog"));
        fake->store->setString("maizeCanola", "wheat");
        const int before = int(fake->http->requests.size());
        screen->loadProducts();
        QCOMPARE(fake->http->requests.size(), before + 1);
        QVERIFY(!fake->http->requests.last().url.contains("do="));
    }

    void labelsChangePlacesDuringASearch() {
        fake->store->setString("maizeCanola", "maize");
        auto* screen = new MaizeAllViewController;
        mount(screen);
        QCOMPARE(screen->tableView->cellForRow(0).values.value("label1").toString(), QStringLiteral("Altınkoçan 650"));
        screen->searchBar->userType("harman");
        QCOMPARE(screen->indexArr, QList<int>{1});
        QCOMPARE(screen->collectionView->cellForRow(0).values.value("label1").toString(), QStringLiteral("Danelik Mısır"));
        QCOMPARE(screen->tableView->cellForRow(0).values.value("label2").toString(), QStringLiteral("Harmanyeri 600"));
        // The last hybrid is never found, and the detail opens at the row as it stands.
        screen->searchBar->setText("");
        screen->searchBar->userType("erkenci");
        QVERIFY(screen->indexArr.isEmpty());
        screen->searchBar->userEdit(0, 7, "");
        fake->run(0);
        QCOMPARE(screen->tableView->cellForRow(0).values.value("label1").toString(), QStringLiteral("Altınkoçan 650"));
        screen->tableView->selectRow(2);
        auto* detail = qobject_cast<MaizeDetailViewController*>(screen->navigationController()->topViewController());
        QVERIFY(detail && detail->id == "5005");

        // One element without a picture fails the update: the rows stay.
        fake->http->on("productCatalog/products", jsonReply(list({QJsonObject{{"id", 1}, {"title", "x"}, {"group", "y"}}})));
        screen->loadProducts();
        fake->run(0);
        QCOMPARE(screen->tableView->numberOfRows(), 3);
    }

    void maizeAndCanolaSectionsBuildTheirCards() {
        const auto kinds = [](const QList<SeedCard>& cards) {
            QStringList k;
            for (const auto& c : cards) k << c.kind.mid(17);
            return k;
        };
        QCOMPARE(kinds(seedCards(sectionOf({image("a"), box("Verim"), para("x"), box("Bitki")}), 0, "maize")),
                 (QStringList{"Img", "CB", "CB"}));
        QVERIFY(seedCards(sectionOf({para("x"), head("y")}), 0, "maize").isEmpty());
        // Canola: row 1 is one picture from block 0, whatever the blocks are.
        const auto one = seedCards(sectionOf({image("http://svc.test/k.svg"), para("x"), head("y")}), 1, "canola");
        QCOMPARE(one.size(), 1);
        QCOMPARE(one.first().imageUrl, QStringLiteral("http://svc.test/k.svg"));
        // Elsewhere pairs of paragraph and headline; an odd last block is left out; one block gives nothing.
        const auto pairs = seedCards(sectionOf({para("p0"), head("h0"), para("p1"), head("h1"), para("p2")}), 2, "canola");
        QCOMPARE(pairs.size(), 2);
        QCOMPARE(pairs.at(1).canolaTitle, QStringLiteral("h1"));
        QCOMPARE(pairs.at(1).detail, QStringLiteral("p1"));
        QVERIFY(pairs.at(0).imgViewHidden && pairs.at(0).titleHidden);
        QVERIFY(seedCards(sectionOf({para("p0")}), 0, "canola").isEmpty());
    }

    void detailOpensSectionsDocumentsAndTheRepresentative() {
        fake->store->setString("maizeCanola", "maize");
        const QJsonObject tree{{"data", QJsonObject{
            {"group", "Danelik Mısır"}, {"title", "Altınkoçan 650"}, {"path", "http://svc.test/p.svg"},
            {"documents", QJsonArray{QJsonObject{{"extra", "Broşür"}, {"path", "http://svc.test/b.pdf"}}}},
            {"contents", QJsonArray{sectionOf({box("Verim"), image("http://svc.test/big.svg")}), sectionOf({box("Bitki")})}}}}};
        fake->http->on("productCatalog/product-detail", jsonReply(tree));
        fake->http->on("productCatalog/region-attendant", jsonReply(QJsonObject{{"message", QJsonObject{{"type", "warning"}}}}));
        auto* screen = new MaizeDetailViewController;
        screen->id = "5003";
        mount(screen);
        QVERIFY(fake->http->requestsFor("productCatalog/product-detail").first().url.endsWith("catalog=maize-catalog&id=5003"));
        QCOMPARE(screen->groupNameLbl->text(), QStringLiteral("Ürün Grubu: Danelik Mısır"));
        QCOMPARE(screen->tableView1Height->constant(), 56.0);
        const double oneOpen = screen->tableView2Height->constant();
        QCOMPARE(screen->tableView2->cellForRow(0).values.value("stackView").toList().size(), 2);

        screen->tableView2->selectRow(0); // the open maize section shows its picture full screen
        QVERIFY(!screen->fullImageView->isHidden());
        QCOMPARE(screen->largeImageView->imageUrl(), QUrl("http://svc.test/big.svg"));
        screen->closeImageView();
        screen->tableView2->selectRow(1);
        QCOMPARE(screen->tableView2->cellForRow(0).reuseIdentifier, QStringLiteral("MaizeProductDetailBefore2Cell"));
        QVERIFY(screen->tableView2Height->constant() < oneOpen);
        screen->tableView2->selectRow(1); // no image block: nothing
        QVERIFY(screen->fullImageView->isHidden());

        screen->callButton();
        fake->run(0);
        QCOMPARE(fake->alert()->buttonTitles(), QStringList{"Tamam"});
        fake->alert()->tapButton(0);
        fake->run(0);

        screen->tableView1->selectRow(0);
        auto* doc = qobject_cast<catalogue::MaizeDocumentViewController*>(screen->navigationController()->topViewController());
        QVERIFY(doc);
        fake->run(0);
        QCOMPARE(doc->title(), QStringLiteral("Broşür"));
        QCOMPARE(doc->webView->url(), QUrl("http://svc.test/b.pdf"));
    }

private:
    void mount(platform::ViewController* screen) {
        auto* nav = new platform::NavigationController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
    }
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(SeedsTest)
#include "tst_seeds.moc"
