// The farm list and its panels against scripted replies: what the cards read, where the adding cell
// goes, how the crop and product panels choose, what goes to the service, and how refusals come back.

#include "FakePlatform.h"
#include "farms/FarmerProductRequest.h"
#include "farms/FarmsViewController.h"
#include "farms/PlantPanel.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using farms::FarmsViewController;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonObject& errors = {}) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", errors}, {"data", data}};
}

QJsonObject farm(int id, const QString& name, const QJsonValue& range, const QJsonArray& aps,
                 const QJsonValue& image = QJsonValue::Null) {
    return QJsonObject{{"id", id}, {"name", name}, {"range", range}, {"aps", aps}, {"image", image},
                       {"period", QJsonValue::Null}, {"period_pdf", QJsonValue::Null}};
}

QJsonObject ap(int id, const QString& name) { return QJsonObject{{"id", id}, {"name", name}}; }

QJsonArray farmList(int n) {
    QJsonArray list;
    for (int i = 0; i < n; ++i) list.append(farm(10 + i, "Buğday", 100 + i, {}));
    return list;
}

const QJsonArray Plants{QJsonObject{{"id", 1}, {"name", "Buğday"}}, QJsonObject{{"id", 3}, {"name", "Mısır"}},
                        QJsonObject{{"id", 10}, {"name", "Domates"}}};
const QJsonArray Products{ap(51, "Tarvenza<sup>&reg;</sup> 250 EC"), ap(52, "Nodrix<sup>&reg;</sup> 480 SC"),
                          ap(53, "Kelvaro<sup>&reg;</sup> 70 WG"), ap(62, "Yaprak Gübresi 20-20-20")};

QJsonObject bodyOf(const HttpRequest& request) { return QJsonDocument::fromJson(request.body).object(); }

} // namespace

class FarmsTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        farms = QJsonArray{farm(7, "Buğday", 180, {ap(59, "Mirelo<sup>&reg;</sup> 45 OD"), ap(51, "Tarvenza<sup>&reg;</sup> 250 EC")},
                                "http://svc.test/static/media/farms/bugday.svg"),
                           farm(8, "Şeker Pancarı", 22.5, {})};
        fake->http->on("farmer/produces", [this](const HttpRequest&) { return jsonReply(envelope(QJsonObject{{"farmerProduces", farms}})); });
        fake->http->on("produces", jsonReply(envelope(QJsonObject{{"produces", Plants}})));
        fake->http->on("produce/aps", jsonReply(envelope(QJsonObject{{"aps", Products}})));
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"notifications", QJsonArray{}}, {"unreadCount", 0}})));
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void requestKeepsItsKeyOrderAndSendsOnlyWhatIsSet() {
        farms::FarmerProductRequest request;
        request.doParam = QStringLiteral("produce/set");
        request.range = QStringLiteral("12.3");
        request.apsList = QJsonArray{51, 52};
        request.produceID = 3;
        request.objectID = 7;
        request.periodID = QStringLiteral("305");
        request.farmerPriority = 1;
        QStringList keys;
        for (const auto& [key, value] : request.dictionaryRepresentation()) keys << key;
        QCOMPARE(keys, (QStringList{"id", "produceId", "periodId", "farmerprio", "aps", "range", "bearer"}));
        QCOMPARE(request.dictionaryRepresentation().at(4).second, QJsonValue(QJsonArray{51, 52}));
        QCOMPARE(request.dictionaryRepresentation().at(5).second, QJsonValue(12.3));

        // An empty list and unset properties stay out; the size text always goes as a number.
        farms::FarmerProductRequest bare;
        bare.apsList = QJsonArray{};
        for (const QString& text : {QString(""), QString("abc")}) {
            bare.range = text;
            const auto p = bare.dictionaryRepresentation();
            QCOMPARE(p.size(), 2);
            QCOMPARE(p.at(0).first, QStringLiteral("range"));
            QCOMPARE(p.at(0).second, QJsonValue(0.0));
        }
        fake->store->removeObjectForKey("token");
        QVERIFY(bare.dictionaryRepresentation().size() == 1);
    }

    void loadingAsksForTheThreeListsAndTheBadge() {
        auto* screen = show();
        QCOMPARE(fake->http->requests.size(), 4);
        QStringList commands;
        for (const auto& r : fake->http->requests) commands << commandOf(r);
        QCOMPARE(commands, (QStringList{"farmer/produces", "produces", "produce/aps", "notifications"}));
        QVERIFY(screen->cropEditor()->viewNewProduce->isHidden() && screen->cropEditor()->viewPlant->isHidden() && screen->cropEditor()->viewProduct->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 1); // the farms' indicator, until their reply
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QCOMPARE(screen->arrFarms.size(), 2);
        // Names of products lose their markup on receipt.
        QCOMPARE(screen->cropEditor()->arrProducts.at(0).toObject().value("name").toString(), QStringLiteral("Tarvenza® 250 EC"));
        QCOMPARE(screen->cropEditor()->constCollPlantHeight->constant(), 50.0 + 50.0);
    }

    void cardsReadAsTheServiceSends() {
        auto* screen = loaded();
        QCOMPARE(screen->numberOfItems(), 3);
        const QVariantMap wheat = screen->farmCell(0);
        QCOMPARE(wheat.value("reuseIdentifier").toString(), QStringLiteral("FarmCell"));
        QCOMPARE(wheat.value("lblFarm").toString(), QStringLiteral("Buğday"));
        QCOMPARE(wheat.value("lblFarmSize").toString(), QStringLiteral("180 dekar"));
        QCOMPARE(wheat.value("lblProducts").toString(), QStringLiteral("Mirelo® 45 OD\nTarvenza® 250 EC"));
        QCOMPARE(wheat.value("imgBackUrl").toString(), QStringLiteral("http://svc.test/static/media/farms/bugday.svg"));

        const QVariantMap beet = screen->farmCell(1);
        QCOMPARE(beet.value("lblFarmSize").toString(), QStringLiteral("22.5 dekar"));
        QCOMPARE(beet.value("lblProducts").toString(), QStringLiteral("Zirai Ürün Seçilmedi"));
        QCOMPARE(beet.value("imgBack").toString(), QStringLiteral("tarlaBgImgDomates"));
        QVERIFY(beet.value("imgBackUrl").toString().isEmpty());
    }

    void addingCellGoesAtExactlyThreeFarms_data() {
        QTest::addColumn<int>("farms");
        QTest::addColumn<int>("items");
        QTest::addColumn<bool>("alertShown");
        QTest::newRow("none") << 0 << 1 << false;
        QTest::newRow("two") << 2 << 3 << false;
        QTest::newRow("three") << 3 << 3 << true;
        QTest::newRow("four, should the service send them") << 4 << 5 << false;
    }
    void addingCellGoesAtExactlyThreeFarms() {
        QFETCH(int, farms);
        QFETCH(int, items);
        QFETCH(bool, alertShown);
        this->farms = farmList(farms);
        auto* screen = loaded();
        QCOMPARE(screen->numberOfItems(), items);
        QCOMPARE(!screen->lblProductAlert->isHidden(), alertShown);
        QCOMPARE(screen->constCollTopMargin->constant(), alertShown ? 32.0 : 0.0);
        QCOMPARE(screen->farmCell(items - 1).value("reuseIdentifier").toString(),
                 alertShown ? QStringLiteral("FarmCell") : QStringLiteral("NewFarmCell"));
        // Tapping the adding cell opens an empty panel.
        if (!alertShown) {
            screen->didSelectFarm(items - 1);
            QVERIFY(!screen->cropEditor()->viewNewProduce->isHidden());
            QVERIFY(!screen->cropEditor()->btnNewProduce->isHidden());
            QVERIFY(screen->cropEditor()->btnUpdateProduce->isHidden() && screen->cropEditor()->btnDeleteProduce->isHidden());
        }
    }

    void cropPanelHeightFollowsTheScreen_data() {
        QTest::addColumn<int>("plants");
        QTest::addColumn<double>("screenHeight");
        QTest::addColumn<double>("height");
        QTest::newRow("seventeen fit") << 17 << 844.0 << 450.0;
        QTest::newRow("odd, too many") << 31 << 844.0 << 844.0 - 64 - 50;
        QTest::newRow("even, too many") << 30 << 844.0 << 844.0 - 64 - 50;
        QTest::newRow("even, exactly room") << 28 << 64.0 + 750 << 700.0;
        QTest::newRow("odd, one short of room") << 27 << 64.0 + 749 << 749.0 - 50;
        QTest::newRow("none") << 0 << 844.0 << 0.0;
    }
    void cropPanelHeightFollowsTheScreen() {
        QFETCH(int, plants);
        QFETCH(double, screenHeight);
        QFETCH(double, height);
        QCOMPARE(farms::plantPanelHeight(plants, screenHeight), height);
    }

    void productPanelTakesThreeAndAFourthTapSaysNothing() {
        auto* screen = loaded();
        screen->cropEditor()->openNewProduceView();
        screen->cropEditor()->openProductView();
        QVERIFY(screen->cropEditor()->arrSelectedProducts.isEmpty());
        for (int row : {3, 0, 1, 2}) screen->cropEditor()->selectProduct(row);
        QCOMPARE(screen->cropEditor()->arrSelectedProducts, (QStringList{"Yaprak Gübresi 20-20-20", "Tarvenza® 250 EC", "Nodrix® 480 SC"}));
        QVERIFY(!fake->alert());
        QCOMPARE(screen->cropEditor()->productCell(2).value("underline").toBool(), false);
        // A tap on a chosen one frees a place.
        screen->cropEditor()->selectProduct(3);
        screen->cropEditor()->selectProduct(2);
        screen->cropEditor()->acceptProductView();
        QVERIFY(screen->cropEditor()->viewProduct->isHidden());
        QCOMPARE(screen->cropEditor()->lblProduct->text(), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC\nKelvaro® 70 WG"));

        // Cancelling keeps the label; opening again starts from it.
        screen->cropEditor()->openProductView();
        screen->cropEditor()->selectProduct(0);
        screen->cropEditor()->removeProductView();
        QCOMPARE(screen->cropEditor()->lblProduct->text(), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC\nKelvaro® 70 WG"));
        screen->cropEditor()->openProductView();
        QCOMPARE(screen->cropEditor()->arrSelectedProducts.size(), 3);
        for (int row : {0, 1, 2}) screen->cropEditor()->selectProduct(row);
        screen->cropEditor()->acceptProductView();
        QCOMPARE(screen->cropEditor()->lblProduct->text(), QStringLiteral("Zirai Ürün Seçiniz"));
    }

    void addingSendsThePanelAsItStandsAndReloadsOnSuccess() {
        auto* screen = loaded();
        fake->http->on("produce/set", jsonReply(envelope(QJsonObject{})));
        screen->didSelectFarm(2);
        auto* nav = screen->navigationController();
        QVERIFY(!nav->navigationBar()->userInteractionEnabled());
        screen->cropEditor()->openPlantsView();
        screen->cropEditor()->selectPlant(1);
        screen->cropEditor()->txtFarmSize->userType("12.5");
        screen->cropEditor()->openProductView();
        screen->cropEditor()->selectProduct(2);
        screen->cropEditor()->selectProduct(0);
        screen->cropEditor()->acceptProductView();
        fake->http->requests.clear();
        screen->cropEditor()->btnNewProduce->tap();
        QCOMPARE(fake->platform->window().hudCount(), 1);
        const HttpRequest sent = fake->http->requestsFor("produce/set").value(0);
        QCOMPARE(sent.method, QByteArray("POST"));
        QCOMPARE(bodyOf(sent), (QJsonObject{{"produceId", 3}, {"aps", QJsonArray{53, 51}}, {"range", 12.5}, {"bearer", "tok-1"}}));
        fake->run(0);
        QVERIFY(screen->cropEditor()->viewNewProduce->isHidden());
        QVERIFY(nav->navigationBar()->userInteractionEnabled());
        QCOMPARE(fake->http->requestsFor("farmer/produces").size(), 1);
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void theServiceRefusalIsShownAndThePanelStays() {
        auto* screen = loaded();
        fake->http->on("produce/set", jsonReply(envelope(QJsonValue::Null, 400,
                                                         QJsonObject{{"range", "Tarla büyüklüğünü girmediniz."}})));
        // Nothing chosen and no size: the screen sends it all the same, the size as 0 and no crop.
        screen->cropEditor()->openNewProduceView();
        screen->cropEditor()->txtFarmSize->userType("abc");
        screen->cropEditor()->addProduct();
        QCOMPARE(bodyOf(fake->http->requestsFor("produce/set").value(0)), (QJsonObject{{"range", 0}, {"bearer", "tok-1"}}));
        fake->run(0);
        platform::AlertController* alert = fake->alert();
        QVERIFY(alert);
        QCOMPARE(alert->message(), QStringLiteral("Tarla büyüklüğünü girmediniz."));
        QVERIFY(!screen->cropEditor()->viewNewProduce->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QVERIFY(fake->http->requestsFor("farmer/produces").isEmpty());

        // A refusal with nothing in "errors" still says something: the formatted nothing.
        alert->tapButton(0);
        fake->http->on("produce/set", jsonReply(envelope(QJsonValue::Null, 400)));
        screen->cropEditor()->addProduct();
        fake->run(0);
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->message(), QStringLiteral("(null)"));
    }

    void updatingAFarmWithoutProductsSendsNoProducts() {
        auto* screen = loaded();
        fake->http->on("produce/set", jsonReply(envelope(QJsonObject{})));
        screen->didSelectFarm(1);
        QCOMPARE(screen->selectedProduceID, QJsonValue(8));
        QCOMPARE(screen->cropEditor()->lblFarm->text(), QStringLiteral("Şeker Pancarı"));
        QCOMPARE(screen->cropEditor()->txtFarmSize->text(), QStringLiteral("22.5"));
        QCOMPARE(screen->cropEditor()->lblProduct->text(), QStringLiteral("Zirai Ürün Seçiniz"));
        QCOMPARE(screen->cropEditor()->arrSelectedProducts, QStringList{"Zirai Ürün Seçiniz"});
        QVERIFY(screen->cropEditor()->btnNewProduce->isHidden());
        QVERIFY(!screen->cropEditor()->btnUpdateProduce->isHidden() && !screen->cropEditor()->btnDeleteProduce->isHidden());
        screen->cropEditor()->txtFarmSize->becomeFirstResponder();
        screen->cropEditor()->btnUpdateProduce->tap();
        // The crop's name is not among the plants here, so no crop either.
        QCOMPARE(bodyOf(fake->http->requestsFor("produce/set").value(0)), (QJsonObject{{"id", 8}, {"range", 22.5}, {"bearer", "tok-1"}}));
        fake->run(0);
        QVERIFY(!screen->cropEditor()->txtFarmSize->isFirstResponder());
        QVERIFY(screen->cropEditor()->viewNewProduce->isHidden());
    }

    void anExistingFarmKeepsTheLastChosenCropRow() {
        auto* screen = loaded();
        fake->http->on("produce/set", jsonReply(envelope(QJsonObject{})));
        screen->cropEditor()->openNewProduceView();
        screen->cropEditor()->openPlantsView();
        screen->cropEditor()->selectPlant(0);
        QVERIFY(screen->cropEditor()->viewPlant->isHidden());
        QCOMPARE(screen->cropEditor()->lblFarm->text(), QStringLiteral("Buğday"));
        QVERIFY(!screen->cropEditor()->plantCell(1).value("underline").toBool());
        screen->cropEditor()->removeNewProduceView();
        // The wheat farm opens with its own crop and products, the panel still marks row 0.
        screen->didSelectFarm(0);
        QCOMPARE(screen->cropEditor()->selectedPlantIndex, 0);
        QVERIFY(screen->cropEditor()->plantCell(0).value("underline").toBool());
        QCOMPARE(screen->cropEditor()->arrSelectedProducts, (QStringList{"Mirelo® 45 OD", "Tarvenza® 250 EC"}));
        // Closing the crop panel with row 0 tapped again wipes the crop: the update goes without one.
        screen->cropEditor()->openPlantsView();
        screen->cropEditor()->selectPlant(0);
        QCOMPARE(screen->cropEditor()->selectedPlantIndex, -1);
        QCOMPARE(screen->cropEditor()->lblFarm->text(), QStringLiteral("Ürün Seçiniz"));
        screen->cropEditor()->updateProduce();
        // Only the products the list knows go out.
        QCOMPARE(bodyOf(fake->http->requestsFor("produce/set").value(0)),
                 (QJsonObject{{"id", 7}, {"aps", QJsonArray{51}}, {"range", 180}, {"bearer", "tok-1"}}));
    }

    void deletingAsksNothingAndARefusalSaysNothing() {
        auto* screen = loaded();
        fake->http->on("produce/delete", jsonReply(envelope(QJsonValue::Null, 400, QJsonObject{{"id", "Tarla bulunamadı."}})));
        screen->didSelectFarm(0);
        screen->cropEditor()->btnDeleteProduce->tap();
        const HttpRequest sent = fake->http->requestsFor("produce/delete").value(0);
        QCOMPARE(sent.method, QByteArray("GET"));
        QCOMPARE(queryValues(sent, "id"), QStringList{"7"});
        fake->run(0);
        QVERIFY(!fake->alert());
        QVERIFY(!screen->cropEditor()->viewNewProduce->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QVERIFY(fake->http->requestsFor("farmer/produces").isEmpty());

        fake->http->on("produce/delete", jsonReply(envelope(QJsonValue::Null)));
        farms.removeAt(0);
        screen->cropEditor()->deleteProduce();
        fake->run(0);
        QVERIFY(screen->cropEditor()->viewNewProduce->isHidden());
        QCOMPARE(screen->arrFarms.size(), 1);
        // The list's view may still ask for the row that went.
        QVERIFY(screen->farmCell(2).isEmpty());
    }

    void aFailedLoadKeepsTheListAndHidesTheIndicator() {
        auto* screen = loaded();
        fake->http->on("farmer/produces", transportFailure());
        fake->http->on("produce/set", transportFailure());
        screen->getFarms();
        screen->cropEditor()->openNewProduceView();
        screen->cropEditor()->addProduct();
        fake->run(0);
        QCOMPARE(screen->arrFarms.size(), 2);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QVERIFY(!fake->alert());
        QVERIFY(!screen->cropEditor()->viewNewProduce->isHidden());
    }

private:
    FarmsViewController* show() {
        auto* nav = new platform::NavigationController;
        auto* screen = new FarmsViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        return screen;
    }
    FarmsViewController* loaded() {
        auto* screen = show();
        fake->run(0);
        fake->http->requests.clear();
        return screen;
    }

    FakePlatform* fake = nullptr;
    QJsonArray farms;
};

QTEST_GUILESS_MAIN(FarmsTest)
#include "tst_farms.moc"
