// Market prices against scripted replies: what each switch, tab and filter sends, how the rows read,
// and the crop's detail.

#include "FakePlatform.h"
#include "market/FarmingStockViewController.h"
#include "market/MarketScreens.h"
#include "platform/NavigationController.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using market::FarmingStockViewController;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", QJsonObject{}}, {"data", data}};
}
QJsonObject price(double min, double max, const QString& city) { return QJsonObject{{"min", min}, {"max", max}, {"CityName", city}}; }
QJsonObject detailRow(const QString& variety, const QJsonValue& city, const QString& date) {
    return QJsonObject{{"CropName", "Buğday"}, {"VarietyName", variety}, {"MinPrice", 10.4}, {"MaxPrice", 11},
                       {"LastUpdatedDate", date}, {"CityName", city}};
}

} // namespace

class MarketTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        market::registerScreens();
        status = 200;
        categories = {};
        fake->store->setString("token", "tok-1");
        produces = QJsonArray{QJsonObject{{"name", "Buğday"}, {"agrivoid", 1}, {"prices", QJsonArray{price(12.5, 13.456, "Konya"), price(1, 2, "Ankara")}}},
                              QJsonObject{{"name", "Fındık"}, {"agrivoid", 8}, {"prices", QJsonArray{}}}};
        fake->http->on("agrivo/produces", [this](const HttpRequest&) {
            return jsonReply(envelope(QJsonObject{{"produces", produces}, {"farmer", QJsonValue::Null}}, status));
        });
        fake->http->on("produce/categories", [this](const HttpRequest&) { return jsonReply(envelope(QJsonObject{{"categories", categories}})); });
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"unreadCount", 0}})));
        fake->http->on("agrivo/produce/details", jsonReply(envelope(QJsonObject{{"prices", QJsonArray{
            detailRow("Makarnalık Durum", "Konya", "2024-05-15 09:12:00"), detailRow("Ekmeklik", "Eskişehir", "15.05.2024"),
            detailRow("Ekmeklik", QJsonValue::Undefined, "2024-05-15 09:12:00")}}})));
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void rowsReadAsTheFirstPriceSays() {
        auto* screen = loaded();
        const HttpRequest sent = fake->http->requestsFor("agrivo/produces").value(0);
        QCOMPARE(queryValues(sent, "type"), QStringList{"H"});
        QCOMPARE(queryValues(sent, "strict_location"), QStringList{"0"});
        QVERIFY(queryValues(sent, "category").isEmpty());
        QCOMPARE(screen->strLocationName, QStringLiteral(""));
        const auto wheat = screen->tblStocks->cellForRow(0).values;
        QCOMPARE(wheat.value("lblLowest").toString(), QStringLiteral("12.50 TL"));
        QCOMPARE(wheat.value("lblHighest").toString(), QStringLiteral("13.46 TL"));
        QCOMPARE(wheat.value("lblLocation").toString(), QStringLiteral("Konya"));
        QVERIFY(wheat.value("imgProduce").toString().endsWith("/static/media/images/icons/ic_1.png"));
        const auto hazelnut = screen->tblStocks->cellForRow(1).values;
        QCOMPARE(hazelnut.value("lblLowest").toString(), QStringLiteral("-"));
        QCOMPARE(hazelnut.value("lblHighest").toString(), QStringLiteral("-"));
        QCOMPARE(hazelnut.value("lblLocation").toString(), QStringLiteral("Fiyat bilgisi yok"));

        // A refusal empties the list and hides it.
        status = 400;
        screen->getProduces();
        fake->run(0);
        QCOMPARE(screen->arrProduce.size(), 0);
        QVERIFY(screen->tblStocks->isHidden());
    }

    void tabsAndTheSwitchChooseWhatIsAskedFor() {
        auto* screen = loaded();
        screen->btnStockB->tap();
        fake->run(0);
        QCOMPARE(screen->imgSegment->image(), QStringLiteral("tab2"));
        QCOMPARE(queryValues(fake->http->requestsFor("agrivo/produces").last(), "type"), QStringList{"B"});
        screen->switchLocation->toggle(false);
        fake->run(0);
        QCOMPARE(queryValues(fake->http->requestsFor("agrivo/produces").last(), "strict_location"), QStringList{"1"});
        QCOMPARE(queryValues(fake->http->requestsFor("agrivo/produces").last(), "type"), QStringList{"B"});

        // The detail opened from the exchanges asks for the exchanges too.
        screen->tblStocks->selectRow(0);
        auto* detail = qobject_cast<market::FSDetailViewController*>(nav->topViewController());
        QVERIFY(detail);
        QCOMPARE(detail->title(), QStringLiteral("Buğday"));
        fake->run(0);
        const HttpRequest sent = fake->http->requestsFor("agrivo/produce/details").value(0);
        QCOMPARE(queryValues(sent, "type"), QStringList{"B"});
        QCOMPARE(queryValues(sent, "produce"), QStringList{"1"});
        QCOMPARE(detail->tblStocks->cellForRow(0).values.value("lblName").toString(), QStringLiteral("Buğday - Makarnalık Durum"));
        QCOMPARE(detail->tblStocks->cellForRow(0).values.value("lblLocation").toString(), QStringLiteral("Konya | 15.05.2024"));
        QCOMPARE(detail->tblStocks->cellForRow(0).values.value("lblHighest").toString(), QStringLiteral("11.00 TL"));
        // An unreadable date leaves its part empty; a missing city reads as the format writes nil.
        QCOMPARE(detail->tblStocks->cellForRow(1).values.value("lblLocation").toString(), QStringLiteral("Eskişehir | "));
        QCOMPARE(detail->tblStocks->cellForRow(2).values.value("lblLocation").toString(), QStringLiteral("(null) | 15.05.2024"));
    }

    void theGroupFilter() {
        categories = QJsonArray{QJsonObject{{"id", 1}, {"name", "Hububat"}}, QJsonObject{{"id", 5}, {"name", "Sebzeler"}},
                                QJsonObject{{"id", 6}, {"name", "Meyveler"}}};
        auto* screen = loaded();
        screen->openProductMenu(screen->btnFilter);
        QCOMPARE(screen->dropDownMenu()->listHeight(), 200.0);
        screen->dropDownMenu()->didSelectRow(2);
        fake->run(0);
        QCOMPARE(screen->btnFilter->title(), QStringLiteral("Sebzeler"));
        QCOMPARE(queryValues(fake->http->requestsFor("agrivo/produces").last(), "category"), QStringList{"5"});
        screen->openProductMenu(screen->btnFilter);
        screen->dropDownMenu()->didSelectRow(0);
        fake->run(0);
        QVERIFY(queryValues(fake->http->requestsFor("agrivo/produces").last(), "category").isEmpty());

        // A tab change closes an open menu but keeps it, so the next tap on the filter only closes it.
        screen->openProductMenu(screen->btnFilter);
        auto* open = screen->dropDownMenu();
        screen->btnStockH->tap();
        QVERIFY(!open->isOpen());
        QCOMPARE(screen->dropDownMenu(), open);
        screen->openProductMenu(screen->btnFilter);
        QVERIFY(!screen->dropDownMenu());

        categories.append(QJsonObject{{"id", 7}, {"name", "Sert Kabuklu Meyveler"}});
        screen->getProduceCategories();
        fake->run(0);
        screen->openProductMenu(screen->btnFilter);
        QCOMPARE(screen->dropDownMenu()->listHeight(), 250.0); // 5 entries, under 6
    }

private:
    FarmingStockViewController* loaded() {
        nav = new platform::NavigationController;
        auto* screen = new FarmingStockViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }

    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
    QJsonArray produces, categories;
    int status = 200;
};

QTEST_GUILESS_MAIN(MarketTest)
#include "tst_market.moc"
