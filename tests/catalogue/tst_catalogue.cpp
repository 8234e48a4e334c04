// The catalogue's records, requests, filter and product lists against scripted replies: what decodes
// and what fails a whole list, what goes out, what the process-wide variables keep, and the screens'
// rules, the deliberate slips among them (stale ids, the search that misses the last product).

#include "FakePlatform.h"
#include "catalogue/AllProductsViewController.h"
#include "catalogue/CatalogueRequests.h"
#include "catalogue/HomeViewController.h"
#include "catalogue/SelectedProductViewController.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::catalogue;
using namespace ekinora::testing;

namespace {

QByteArray bytes(const QJsonValue& v) {
    return v.isArray() ? QJsonDocument(v.toArray()).toJson() : QJsonDocument(v.toObject()).toJson();
}
template <class T> bool decodes(const QJsonValue& v) {
    QString error;
    return decodeReply<T>(bytes(v), &error).has_value();
}

QJsonObject item(int id, const QString& name) { return {{"id", id}, {"name", name}, {"group", "g"}}; }
QJsonObject filters(const QJsonArray& plants, const QJsonArray& illness, const QJsonArray& pgroups) {
    return {{"status", 200}, {"message", QJsonObject{{"type", "success"}, {"text", ""}}}, {"errors", QJsonObject{}},
            {"data", QJsonObject{{"plants", plants}, {"illness", illness}, {"pgroups", pgroups}}}};
}
QJsonObject product(const QJsonValue& id, const QString& title, const QString& group = "Fungisit") {
    QJsonObject p{{"title", title}, {"group", group}, {"image", "http://svc.test/static/catalogue/1.svg"}};
    if (!id.isUndefined()) p.insert("id", id);
    return p;
}
QJsonObject list(const QJsonArray& data) { return {{"status", 200}, {"message", ""}, {"errors", ""}, {"data", data}}; }

const QJsonArray PlantList{item(1, "Buğday"), item(9, "Domates"), item(20, "Iğdır Kayısısı")};
const QJsonArray Illnesses{item(1, "Yabani Yulaf"), item(12, "Mildiyö"), item(36, "Kırmızı Örümcek"), item(26, "Elma İç Kurdu")};
const QJsonArray Groups{item(1, "Herbisit"), item(2, "Fungisit"), item(3, "İnsektisit")};

void resetState() {
    productList() = Product{};
    filteredProducts().reset();
    filterReply().reset();
    productDetailJSON().reset();
    sprayPrograms().clear();
    selectedFilterKind().reset();
    for (QStringList* l : {&plantNames(), &pgroupNames(), &illnessNames(), &plantIds(), &pgroupIds(), &illnessIds()}) l->clear();
    for (QString* s : {&selectedFilterId(), &selectedPlantId(), &selectedPgroupId(), &selectedIllnessId(), &selectedPlantName(),
                       &selectedPgroupName(), &selectedIllnessName(), &selectedProductId()})
        *s = QString("");
}

} // namespace

class CatalogueTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        resetState();
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        fake->http->on("productCatalog/filters", [](const HttpRequest& r) {
            // Choosing tomatoes narrows the lists to what tomatoes need.
            if (r.url.contains("plant=9")) return jsonReply(filters({item(9, "Domates")}, {item(12, "Mildiyö")}, {item(2, "Fungisit")}));
            return jsonReply(filters(PlantList, Illnesses, Groups));
        });
        platform::Storyboard::registerIdentifier("SelectedProductSB", [] { return new SelectedProductViewController; });
        platform::Storyboard::registerIdentifier("AllProductsSB", [] { return new AllProductsViewController; });
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void recordsFailAsAWholeOnAWrongKindOrAMissingRequiredField() {
        // The unfiltered list cannot fail for absence, only for a wrong kind.
        QString error;
        const auto empty = decodeReply<Product>("{}", &error);
        QVERIFY(empty && !empty->status && !empty->data);
        QVERIFY(decodes<Product>(QJsonObject{{"data", QJsonArray{QJsonObject{}}}, {"message", QJsonObject{}}, {"errors", 5}}));
        QVERIFY(!decodes<Product>(QJsonObject{{"data", QJsonObject{}}}));
        QVERIFY(!decodes<Product>(list({product("7", "Ilgaz 250 SC")})));
        QVERIFY(!decodeReply<Product>("<html>", &error));

        // The filtered list: id may be absent, a title may not; "message" and "errors" must be texts.
        QVERIFY(decodes<FilteredProduct>(list({product(QJsonValue::Undefined, "A"), product(QJsonValue::Null, "B")})));
        QJsonObject untitled = product(3, "x");
        untitled.remove("title");
        QVERIFY(!decodes<FilteredProduct>(list({product(1, "A"), untitled})));
        QJsonObject objectMessage = list({product(1, "A")});
        objectMessage["message"] = QJsonObject{{"type", "error"}};
        QVERIFY(!decodes<FilteredProduct>(objectMessage));
        QJsonObject objectErrors = list({});
        objectErrors["errors"] = QJsonObject{};
        QVERIFY(!decodes<FilteredProduct>(objectErrors));
        QVERIFY(!decodes<MaizeProducts>(list({product(QJsonValue::Undefined, "A")})));
        QVERIFY(decodes<MaizeProducts>(list({product(4, "A")})));

        // The filter reply wants "message" as an object.
        QJsonObject textMessage = filters(PlantList, Illnesses, Groups);
        QVERIFY(decodes<Filter>(textMessage));
        textMessage["message"] = "ok";
        QVERIFY(!decodes<Filter>(textMessage));

        QVERIFY(!decodeSprayList(bytes(QJsonObject{{"title", "x"}}), &error));
        QVERIFY(decodeSprayList(bytes(QJsonArray{QJsonObject{{"title", "t"}, {"image", "/i"}, {"link", "/l"}}}), &(error = QString())));

        // Two wire keys differ from the fields' names.
        QCOMPARE(Document::stringValue(Document::CodingKeys::fileID), QStringLiteral("fileId"));
        QCOMPARE(Datum::stringValue(Datum::CodingKeys::contentItemID), QStringLiteral("contentItemId"));
        error.clear();
        Document::decode(QJsonObject{{"id", 1}, {"fileId", 2}, {"type", "pdf"}, {"extra", "Etiket"}, {"path", "/p"}}, "root", &error);
        QVERIFY(error.isEmpty());
        // A block's "data" is an object in the real reply, so the declared detail record fails on it.
        QVERIFY(!decodes<ProductDetail>(QJsonObject{{"status", 200}, {"data", QJsonObject{{"contents", QJsonArray{QJsonObject{
                                             {"id", 1}, {"header", "h"}, {"data", QJsonArray{QJsonObject{{"contentItemId", 1},
                                             {"type", "list"}, {"data", QJsonObject{{"list", QJsonArray{"a"}}}}}}}}}}}}}));
    }

    void requestsSendTheBearerOnlyAndKeepTheirVariables() {
        transactionHash() = "tx-9";
        fake->http->on("productCatalog/products", jsonReply(list({product(1, "A"), product(2, "B")})));
        int calls = 0;
        bool good = false;
        GetProductsRequest().getProducts([&](const Product& p, const Error& e) { calls++, good = !e && p.data->size() == 2; });
        fake->run(0);
        QVERIFY(calls == 1 && good);
        const HttpRequest sent = fake->http->requests.last();
        QCOMPARE(sent.header("Authorization"), QByteArray("Bearer tok-1"));
        QVERIFY(!sent.url.contains("hash") && !sent.url.contains("bearer"));
        QVERIFY(sent.url.endsWith("/?do=productCatalog/products&catalog=product-catalog"));

        // Undecodable: no completion, the variable keeps the last good reply.
        fake->http->on("productCatalog/products", jsonReply(QJsonObject{{"data", QJsonObject{}}}));
        GetProductsRequest().getProducts([&](const Product&, const Error&) { calls++; });
        fake->run(0);
        QCOMPARE(calls, 1);
        QCOMPARE(productList().data->size(), 2);

        // A transport error hands over the previous detail with the error.
        fake->http->on("productCatalog/product-detail", jsonReply(QJsonObject{{"data", QJsonObject{{"title", "Eski"}}}}));
        GetProducDetailRequest().getProductDetail("/?do=productCatalog/product-detail&catalog=product-catalog&id=1", [](auto, auto) {});
        fake->run(0);
        fake->http->on("productCatalog/product-detail", transportFailure());
        std::optional<Json> handed;
        Error failure;
        GetProducDetailRequest().getProductDetail("/?do=productCatalog/product-detail&catalog=product-catalog&id=2",
                                                  [&](const std::optional<Json>& j, const Error& e) { handed = j, failure = e; });
        fake->run(0);
        QVERIFY(failure.has_value());
        QCOMPARE(platform::path(*handed, {"data", "title"}).toString(), QStringLiteral("Eski"));

        // The filters give up silently on a transport error; programmes go without a token.
        fake->http->on("productCatalog/filters", transportFailure());
        GetFiltersRequest().getFilters(paths::Filters, [&](auto, auto) { calls++; });
        fake->http->fallback([](const HttpRequest&) { return jsonReply(QJsonArray{}); });
        GetProgramsRequest().getPrograms([&](auto, auto, auto) { calls++; });
        fake->run(0);
        QCOMPARE(calls, 2);
        QVERIFY(!fake->http->requests.last().hasHeader("Authorization"));

        fake->store->removeObjectForKey("token");
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, GetProductsRequest().getProducts([](auto, auto) {}));
    }

    void filterNarrowsByTheRowJustChosenWithStaleIdsOnLaterChoices() {
        auto* home = showHome();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Kullanmadan önce talimatları mutlaka okuyunuz!"));
        fake->alert()->tapButton(0);
        QCOMPARE(home->tableView->numberOfRows(), 4); // no kind yet: the illnesses
        home->bitkiAdiTapped();
        QVERIFY(!home->categoriesView->isHidden());
        QCOMPARE(home->tableView->cellForRow(2).values.value("textLabel").toString(), QStringLiteral("Iğdır Kayısısı"));

        home->tableView->selectRow(1); // tomatoes
        QCOMPARE(fake->http->requests.last().url.mid(fake->http->requests.last().url.indexOf("/?")),
                 QByteArray("/?do=productCatalog/filters&plant=9&catalog=product-catalog"));
        QVERIFY(home->categoriesView->isHidden());
        QCOMPARE(home->plantNameLbl->text(), QStringLiteral("Domates"));
        QCOMPARE(home->tableView->numberOfRows(), 0); // emptied at once; the reply does not reload
        fake->run(0);
        QCOMPARE(illnessNames(), QStringList{"Mildiyö"});
        QCOMPARE(illnessIds(), (QStringList{"1", "12", "36", "26", "12"}));

        // The second choice shows "Mildiyö" but takes the id at its row from the first fetch.
        home->hastalikTapped();
        home->tableView->selectRow(0);
        QCOMPARE(home->disasterLbl->text(), QStringLiteral("Mildiyö"));
        QCOMPARE(selectedIllnessId(), QStringLiteral("1"));
        QCOMPARE(selectedPlantId(), QStringLiteral("9"));
        QVERIFY(fake->http->requests.last().url.contains("&illness=1&"));

        // The result list sends all choices; back from it, the choice is gone but the labels stay.
        fake->http->on("productCatalog/products", jsonReply(list({product(1, "A")})));
        home->selectedProductButtonTapped();
        auto* nav = home->navigationController();
        QCOMPARE(nav->depth(), 2);
        QVERIFY(fake->http->requests.last().url.endsWith("&catalog=product-catalog&plant=9&illness=1"));
        nav->popViewControllerAnimated(false);
        fake->run(0);
        QCOMPARE(home->plantNameLbl->text(), QStringLiteral("Domates"));
        home->selectedProductButtonTapped();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Hiç bir tercih yapmadınız"));
        fake->alert()->tapButton(0);

        home->clearFiltersButtonTapped();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Filtre temizlendi"));
        QCOMPARE(home->plantNameLbl->text(), QStringLiteral("Bitki Adı"));
        QCOMPARE(home->disasterLbl->text(), QStringLiteral("Hastalık/Zararlı/Yabancı Ot"));
    }

    void panelSearchNarrowsInPlaceWithoutTurkishFolding() {
        auto* home = showHome();
        fake->alert()->tapButton(0);
        home->hastalikTapped();
        home->searchText->userType("K");
        QCOMPARE(illnessNames(), (QStringList{"Kırmızı Örümcek", "Elma İç Kurdu"}));
        home->searchText->userType("ı");
        QCOMPARE(illnessNames(), QStringList{"Kırmızı Örümcek"});
        home->searchText->userEdit(1, 1, ""); // back to "K": the list stays narrowed
        QCOMPARE(illnessNames(), QStringList{"Kırmızı Örümcek"});
        home->searchText->userEdit(0, 1, ""); // emptied: everything fetched again, the choice cleared
        fake->run(0);
        QCOMPARE(illnessNames().size(), 4);
        QVERIFY(fake->logged("Bilgiler Boş"));

        // A capital I lowers to "i": no match against "ı".
        home->searchText->userType("KIR");
        QVERIFY(illnessNames().isEmpty());
        home->searchText->userEdit(0, 3, "");
        fake->run(0);
        // The id list is not narrowed: a narrowed row takes the id at its new position.
        home->searchText->userType("Kurdu");
        QCOMPARE(illnessNames(), QStringList{"Elma İç Kurdu"});
        home->tableView->selectRow(0);
        QCOMPARE(selectedIllnessId(), QStringLiteral("1"));

        selectedFilterKind().reset();
        home->searchText->setText("x");
        home->narrowNames();
        QVERIFY(fake->logged("Have you done something new?"));
    }

    void filterReplyWithoutListsStops() {
        fake->http->on("productCatalog/filters", jsonReply(QJsonObject{{"message", QJsonObject{}}, {"data", QJsonObject{{"plants", QJsonArray{}}}}}));
        showHome(false);
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, fake->run(0));
    }

    void fullListSearchMissesTheLastAndOpensByPosition() {
        QJsonArray products;
        for (int i = 0; i < 9; ++i) products.append(product(100 + i, QString("Ürün %1").arg(i)));
        products[7] = product(107, "Işıldak<sup>&reg;</sup> 25 SC");
        products[8] = product(108, "Ilgaz<sup>&reg;</sup> 480 SL");
        fake->http->on("productCatalog/products", jsonReply(list(products)));
        auto* screen = new AllProductsViewController;
        mount(screen);
        QCOMPARE(screen->tableView->numberOfRows(), 9);
        QCOMPARE(screen->tableView->cellForRow(7).values.value("label1").toString(), QStringLiteral("Işıldak® 25 SC"));

        screen->searchBar->userType("ılgaz");
        QCOMPARE(screen->tableView->numberOfRows(), 0); // nor is "Ilgaz" the last one ever found
        // "I" lowers to "i", never to "ı".
        screen->searchBar->setText("");
        screen->searchBar->userType("ışıl");
        QCOMPARE(screen->tableView->numberOfRows(), 0);
        screen->searchBar->setText("");
        screen->searchBar->userType("şıl");
        QCOMPARE(screen->indexArr, QList<int>{7});
        QCOMPARE(screen->collectionView->cellForRow(0).values.value("label2").toString(), QStringLiteral("Fungisit"));
        screen->tableView->selectRow(0);
        QCOMPARE(selectedProductId(), QStringLiteral("100"));
        // The hidden grid shows the search's rows once it is switched to, and the table after a switch back.
        screen->rightBarButtonItem()->tap();
        QCOMPARE(screen->collectionView->rows()->count(), 1);
        screen->searchBar->userEdit(0, 3, "ü");
        QCOMPARE(screen->collectionView->rows()->count(), 7);
        screen->rightBarButtonItem()->tap();
        QCOMPARE(screen->tableView->rows()->count(), 7);
        QCOMPARE(screen->tableView->rows()->valuesAt(6).value("label1").toString(), QStringLiteral("Ürün 6"));
        screen->searchBar->userEdit(0, 1, "şıl");

        const int before = int(fake->http->requestsFor("productCatalog/products").size());
        screen->searchBar->userEdit(0, 3, "");
        QCOMPARE(fake->http->requestsFor("productCatalog/products").size(), before + 1);
        QCOMPARE(screen->tableView->numberOfRows(), 0); // empty until the reply
        fake->run(0);
        QCOMPARE(screen->tableView->numberOfRows(), 9);

        screen->rightBarButtonItem()->tap();
        QVERIFY(screen->tableView->isHidden() && !screen->collectionView->isHidden());
        screen->rightBarButtonItem()->tap();
        QVERIFY(!screen->tableView->isHidden());

        fake->http->on("productCatalog/products", transportFailure());
        screen->loadProducts();
        fake->run(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bilinmeyen Hata"));
    }

    void resultListSendsChoicesInOrderAndStaysBlockedOnABadReply() {
        selectedPlantId() = "9", selectedPlantName() = "Domates";
        selectedPgroupName() = "Fungisit"; // a name without its id shows as a chip only
        selectedIllnessId() = "12", selectedIllnessName() = "Mildiyö";
        QJsonObject wrongMessage = list({product(1, "A")});
        wrongMessage["message"] = QJsonObject{{"text", "x"}};
        fake->http->on("productCatalog/products", jsonReply(wrongMessage));
        auto* screen = new SelectedProductViewController;
        mount(screen);
        QVERIFY(fake->http->requests.last().url.endsWith("catalog=product-catalog&plant=9&illness=12"));
        QCOMPARE(screen->topLblArr, (QStringList{"Fungisit", "Domates", "Mildiyö"}));
        QCOMPARE(screen->tableView->numberOfRows(), 0);
        QVERIFY(fake->platform->window().waitVisible());

        fake->http->on("productCatalog/products", jsonReply(list({product(5, "Ilgaz<sup>&reg;</sup> 480 SL"), product(QJsonValue::Null, "B")})));
        screen->loadSelectedProducts();
        fake->run(0);
        QVERIFY(!fake->platform->window().waitVisible());
        const auto grid = screen->collectionViewBottom->cellForRow(0);
        QCOMPARE(grid.reuseIdentifier, QStringLiteral("productCell"));
        QCOMPARE(grid.values.value("nameLabel").toString(), QStringLiteral("Ilgaz® 480 SL"));
        QCOMPARE(screen->tableView->cellForRow(0).reuseIdentifier, QStringLiteral("selectedProductCell"));
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, screen->tableView->selectRow(1));
    }

private:
    HomeViewController* showHome(bool run = true) {
        auto* home = new HomeViewController;
        mount(home, run);
        return home;
    }
    void mount(platform::ViewController* screen, bool run = true) {
        auto* nav = new platform::NavigationController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        if (run) fake->run(0);
    }

    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "tst_catalogue.moc"
