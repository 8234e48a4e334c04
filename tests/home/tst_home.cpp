// The farmer's home against a fake platform: the three paths of an appearance, the profile reply
// (forced logout, stored record, consent panel, the club invitation's countdown), the farm list and
// the lost login, the weather summary and its retry, adding a farm, consent answers, the regional
// contact and the bell.

#include "FakePlatform.h"
#include "farms/DocumentViewController.h"
#include "farms/ProductDetailViewController.h"
#include "home/ViewController.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/ServiceRoots.h"
#include "widgets/BadgeBarButtonItem.h"
#include "widgets/GroupedRadioButton.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using platform::Json;

namespace {

QJsonObject userRecord(const QString& type) {
    return QJsonObject{
        {"type", type},
        {"token", "tok"},
        {"menu", QJsonArray{0, 1, 2}},
        {"location",
         QJsonObject{{"county", QJsonObject{{"name", "Çumra"}, {"latitude", 37.5736}, {"longitude", 32.7747}}},
                     {"region", QJsonObject{{"fullname", "SERDAR AKIN"}, {"phonenumber", "05301110011"}}}}},
    };
}

QJsonObject hour(const QJsonValue& time, double temperature, int pictocode = 3) {
    return QJsonObject{{"time", time},          {"temperature", temperature}, {"precipitation", 1.6},
                       {"windspeed", 12.7},     {"winddirection", 225},       {"pictocode", pictocode}};
}

QJsonObject ok(const QJsonValue& data) { return QJsonObject{{"status", 200}, {"message", ""}, {"data", data}}; }

QJsonObject farm(int id, const QString& name, const QJsonValue& period, const QJsonValue& image, const QJsonValue& pdf) {
    return QJsonObject{{"id", id}, {"name", name}, {"range", 10}, {"aps", QJsonArray{}},
                       {"image", image}, {"period", period}, {"period_pdf", pdf}};
}

QJsonObject bodyOf(const platform::HttpRequest& r) { return QJsonDocument::fromJson(r.body).object(); }

} // namespace

class HomeTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        service::Roots::configure(QStringLiteral("http://svc.test"));
        using platform::Storyboard;
        Storyboard::clear();
        Storyboard::registerIdentifier("contentViewController", [] { return new platform::NavigationController; });
        for (const char* id : {"loginVC", "newsVC", "farmingStockVC"})
            Storyboard::registerIdentifier(id, [id] {
                auto* c = new platform::ViewController;
                c->setObjectName(id);
                return c;
            });
        Storyboard::registerIdentifier("ProductDetailViewController", [] { return new farms::ProductDetailViewController; });
        Storyboard::registerIdentifier("DocumentViewController", [] { return new farms::DocumentViewController; });
        fake->clock->setNow(QDateTime(QDate(2026, 3, 5), QTime(14, 20)));
    }
    void cleanup() {
        delete fake;
        platform::Storyboard::clear();
    }

    // Appearances.

    void withoutARecordTheSignInOpensAndTheSplashStaysASecond() {
        show();
        QCOMPARE(contentTop(), QStringLiteral("loginVC"));
        QVERIFY(!home->imgLoading->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 0); // the indicator left with the home's content
        fake->run(999);
        QVERIFY(!home->imgLoading->isHidden());
        fake->run(1);
        QVERIFY(home->imgLoading->isHidden());
        QCOMPARE(fake->http->requestsFor("farmer/profile").size(), 0);
        QCOMPARE(fake->platform->notificationCenter().observerCount("checkNotifBadge"), 1);
    }

    void aFarmerIsServedAtOnce() {
        signedIn("farmer");
        show();
        QVERIFY(home->imgLoading->isHidden());
        for (const char* command : {"farmer/produces", "notifications", "farmer/profile", "produces", "produce/aps"})
            QVERIFY2(fake->http->requestsFor(command).size() == 1, command);
        QCOMPARE(weatherRequests().size(), 1);
        QCOMPARE(fake->platform->window().hudCount(), 1);
        QCOMPARE(contentTop(), QStringLiteral("ViewController"));
        home->openEventView(); // the market button hands over the market prices
        QCOMPARE(contentTop(), QStringLiteral("farmingStockVC"));
    }

    void anotherRoleBuildsTheNewsAndDropsThem() {
        int made = 0;
        platform::Storyboard::registerIdentifier("newsVC", [&made] {
            ++made;
            return new platform::ViewController;
        });
        signedIn("dealer");
        show();
        QVERIFY(home->imgLoading->isHidden());
        QCOMPARE(made, 1);
        QCOMPARE(contentTop(), QStringLiteral("ViewController"));
        QCOMPARE(fake->http->requestsFor("farmer/profile").size(), 0);
        QCOMPARE(fake->http->requestsFor("farmer/produces").size(), 0);
    }

    // The profile reply.

    void aFarmerTheServiceCallsAClubMemberIsLoggedOut() {
        signedIn("farmer");
        fake->store->setString("token", "tok");
        fake->store->setString("libStat", "3");
        fake->http->on("farmer/profile", jsonReply(ok(userRecord("loyalty"))));
        fake->http->on("farmer/logout", jsonReply(ok(QJsonValue::Null)));
        show();
        fake->run(0);
        QVERIFY(!fake->store->contains("userInfo"));
        QVERIFY(!fake->store->contains("token"));
        QCOMPARE(fake->store->stringForKey("isLogout"), QStringLiteral("YES"));
        const auto logout = fake->http->requestsFor("farmer/logout");
        QCOMPARE(logout.size(), 1);
        QVERIFY(!logout.first().url.contains("bearer"));
        QCOMPARE(contentTop(), QStringLiteral("loginVC"));
        // The new role is a club member's: the invitation's step runs all the same.
        QCOMPARE(fake->store->stringForKey("libStat"), QStringLiteral("2"));
        QVERIFY(fake->alert());
    }

    void theRecordIsReplacedAndTheConsentAskedWhenTheServiceSaysSo_data() {
        QTest::addColumn<QJsonValue>("etkPopup");
        QTest::addColumn<bool>("asked");
        QTest::newRow("number 1") << QJsonValue(1) << true;
        QTest::newRow("text 1") << QJsonValue("1") << true;
        QTest::newRow("0") << QJsonValue(0) << false;
        QTest::newRow("absent") << QJsonValue(QJsonValue::Undefined) << false;
    }
    void theRecordIsReplacedAndTheConsentAskedWhenTheServiceSaysSo() {
        QFETCH(QJsonValue, etkPopup);
        QFETCH(bool, asked);
        signedIn("farmer");
        QJsonObject fresh = userRecord("farmer");
        fresh.insert("fullname", "Hasan Doğru");
        if (!etkPopup.isUndefined()) fresh.insert("etkPopup", etkPopup);
        fake->http->on("farmer/profile", jsonReply(ok(fresh)));
        show();
        fake->run(0);
        QCOMPARE(fake->store->jsonForKey("userInfo").toObject().value("fullname").toString(), QStringLiteral("Hasan Doğru"));
        QVERIFY(fake->posts.contains("checkMenuList"));
        QCOMPARE(!home->consentPanel()->viewKVKK->isHidden(), asked);
        QCOMPARE(fake->http->requestsFor("page/detail").size(), asked ? 1 : 0);
        QVERIFY(!fake->alert());
    }

    void theClubInvitationStepsOncePerRun_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("left");
        QTest::newRow("counting down") << "3" << "2";
        QTest::newRow("over at zero") << "0" << "0";
    }
    void theClubInvitationStepsOncePerRun() {
        QFETCH(QString, stored);
        QFETCH(QString, left);
        signedIn("loyalty");
        fake->store->setString("libStat", stored);
        fake->http->on("farmer/profile", jsonReply(ok(userRecord("loyalty"))));
        show();
        fake->run(0);
        QCOMPARE(fake->store->stringForKey("libStat"), left);
        platform::AlertController* alert = fake->alert();
        QCOMPARE(alert != nullptr, stored != "0");
        if (!alert) return;
        QCOMPARE(alert->message(), QStringLiteral("Bereket Kulübümüz başladı, tıklayın, siz de kazanın!"));
        QCOMPARE(alert->buttonTitles(), (QStringList{"Bereket Kulübü", "Kapat"}));
        alert->tapButton(1);
        QVERIFY(!fake->alert());

        // Another appearance in the same run: no second step.
        home->disappear(false);
        home->appear(false);
        fake->run(0);
        QCOMPARE(fake->http->requestsFor("farmer/profile").size(), 2);
        QCOMPARE(fake->store->stringForKey("libStat"), QStringLiteral("2"));
        QVERIFY(!fake->alert());
    }

    void theClubButtonOpensTheMenuAndAsksForTheLoyaltyScreen() {
        signedIn("loyalty");
        fake->store->setString("libStat", "1");
        fake->http->on("farmer/profile", jsonReply(ok(userRecord("loyalty"))));
        auto* menu = new platform::ViewController;
        show([&](platform::SideMenuViewController* root) { root->setLeftMenuViewController(menu); });
        fake->run(0);
        QVERIFY(fake->alert());
        fake->alert()->tapButton(0);
        QVERIFY(root->isMenuVisible());
        QVERIFY(fake->posts.contains("goToLoyalty"));
    }

    // Farms.

    // A 401 means a lost login; a failure only takes the indicator away.
    void aRefusedFarmListMeansALostLogin_data() {
        QTest::addColumn<bool>("refused");
        QTest::newRow("401") << true;
        QTest::newRow("failure") << false;
    }
    void aRefusedFarmListMeansALostLogin() {
        QFETCH(bool, refused);
        signedIn("farmer");
        if (refused)
            fake->http->on("farmer/produces", jsonReply(QJsonObject{{"status", 401}, {"message", "Oturum"}}));
        show();
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QCOMPARE(contentTop(), refused ? QStringLiteral("loginVC") : QStringLiteral("ViewController"));
        QVERIFY(home->arrFarms.isEmpty());
        // The store keeps the record, so the next start comes back here.
        QCOMPARE(fake->store->jsonForKey("userInfo").toObject().value("type").toString(), QStringLiteral("farmer"));
    }

    void theListHasRoomForThreeFarms_data() {
        QTest::addColumn<int>("farms");
        QTest::addColumn<int>("items");
        QTest::addColumn<bool>("alertShown");
        QTest::newRow("none") << 0 << 1 << false;
        QTest::newRow("two") << 2 << 3 << false;
        QTest::newRow("three") << 3 << 3 << true;
        QTest::newRow("four from the service") << 4 << 5 << false;
    }
    void theListHasRoomForThreeFarms() {
        QFETCH(int, farms);
        QFETCH(int, items);
        QFETCH(bool, alertShown);
        QJsonArray list;
        for (int i = 0; i < farms; ++i) list.append(farm(i + 1, "Buğday", "Kardeşlenme", QJsonValue::Null, QJsonValue::Null));
        loadFarms(list);
        QCOMPARE(home->collFarmsNumberOfItems(), items);
        QCOMPARE(!home->lblProductAlert->isHidden(), alertShown);
        QCOMPARE(home->constCollTopMargin->constant(), alertShown ? 32.0 : 0.0);
        QCOMPARE(home->collFarmsCell(items - 1).value("reuseIdentifier").toString(),
                 alertShown ? QStringLiteral("FarmCell") : QStringLiteral("NewFarmCell"));
    }

    void cardsFillTheirGapsAndATapOpensTheCalendarOrTheDocument() {
        const QJsonObject pdf{{"title", "Şeker Pancarı - Yaprak Gelişimi Dönemi"}, {"pdf", "http://svc.test/documents/periods/702.pdf"}};
        loadFarms(QJsonArray{farm(11, "Buğday", "Kardeşlenme", "http://svc.test/b.svg", QJsonValue::Null),
                             farm(12, "Şeker Pancarı", QJsonValue::Null, QJsonValue::Null, pdf)});
        const QVariantMap first = home->collFarmsCell(0), second = home->collFarmsCell(1);
        QCOMPARE(first.value("lblPeriod").toString(), QStringLiteral("Kardeşlenme"));
        QCOMPARE(first.value("imageUrl").toString(), QStringLiteral("http://svc.test/b.svg"));
        QCOMPARE(second.value("lblPeriod").toString(), QString(""));
        QCOMPARE(second.value("image").toString(), QStringLiteral("tarlaBgImgDomates"));

        home->collFarmsDidSelectItem(0);
        auto* calendar = qobject_cast<farms::ProductDetailViewController*>(home->presentedViewController());
        QVERIFY(calendar);
        QCOMPARE(calendar->objectID.toInt(), 11);
        QCOMPARE(calendar->produceName.toString(), QStringLiteral("Buğday"));
        QCOMPARE(calendar->produceImage.toString(), QStringLiteral("http://svc.test/b.svg"));
        calendar->closeViewController();

        home->collFarmsDidSelectItem(1);
        auto* document = qobject_cast<farms::DocumentViewController*>(home->presentedViewController());
        QVERIFY(document);
        QCOMPARE(document->titleString, QStringLiteral("Şeker Pancarı - Yaprak Gelişimi Dönemi"));
        QCOMPARE(document->urlString, QStringLiteral("http://svc.test/documents/periods/702.pdf"));
        document->close();

        home->collFarmsDidSelectItem(2); // the adding cell
        QVERIFY(!home->cropEditor()->viewNewProduce->isHidden());
    }

    // Weather.

    void theSummaryTakesThePresentHourAndScansTheDay() {
        signedIn("farmer");
        // 14:20 local time: the record of hour 14, whether "time" is a number or a text.
        fake->http->on("weather/weather-json",
                       jsonReply(ok(QJsonArray{hour(0, 9.5), hour("13", 18.2), hour("14", 19.6, 7), hour(15, 21.4), hour(23, 4.1)})));
        show();
        home->imgWeatherCondition->setFrameSize(QSizeF(88, 88));
        fake->run(0);
        QCOMPARE(home->lblWeatherLocation->text(), QStringLiteral("Çumra"));
        QCOMPARE(home->lblWeatherTemprature->text(), QStringLiteral("19"));
        QCOMPARE(home->lblWeatherRain->text(), QStringLiteral("1"));
        QCOMPARE(home->lblWeatherWind->text(), QStringLiteral("12"));
        QCOMPARE(home->lblWeatherDate->text(), QStringLiteral("5.3.2026"));
        const QJsonObject present = home->dictionaryWeather.toObject();
        QCOMPARE(present.value("time").toString(), QStringLiteral("14"));
        QCOMPARE(present.value("temperatureMax").toDouble(), double(21.4f));
        QCOMPARE(present.value("temperatureMin").toDouble(), double(4.1f));
        QCOMPARE(home->imgWeatherCondition->imageUrl(), QUrl("http://svc.test/static/media/images/weather/7_day.svg"));
        QCOMPARE(home->imgWeatherCondition->renderSize(), QSizeF(80, 80));
        // Weather is public.
        const auto sent = weatherRequests().first();
        QVERIFY(sent.url.endsWith("latitude=37.5736&longitude=32.7747&date=2026-03-05"));
        QVERIFY(!sent.hasHeader("Authorization"));
    }

    void theScanFindsTheLowestAfterAHighFirstRecord_data() {
        QTest::addColumn<QList<double>>("temperatures");
        QTest::addColumn<double>("max");
        QTest::addColumn<double>("min");
        QTest::newRow("highest first") << QList<double>{20, 15, 10, 12} << 20.0 << 10.0;
        QTest::newRow("lowest first") << QList<double>{-3, 5, 11, 7} << 11.0 << -3.0;
        QTest::newRow("both in the middle") << QList<double>{8, 12, 2, 9} << 12.0 << 2.0;
        QTest::newRow("one record") << QList<double>{6.5} << 6.5 << 6.5;
    }
    void theScanFindsTheLowestAfterAHighFirstRecord() {
        QFETCH(QList<double>, temperatures);
        QFETCH(double, max);
        QFETCH(double, min);
        signedIn("farmer");
        QJsonArray hours;
        for (int i = 0; i < temperatures.size(); ++i) hours.append(hour(i == 0 ? 14 : 20 + i, temperatures[i]));
        fake->http->on("weather/weather-json", jsonReply(ok(hours)));
        show();
        fake->run(0);
        QCOMPARE(home->dictionaryWeather.toObject().value("temperatureMax").toDouble(), max);
        QCOMPARE(home->dictionaryWeather.toObject().value("temperatureMin").toDouble(), min);
    }

    void withoutTheHourThePanelKeepsWhatItHad() {
        signedIn("farmer");
        const auto morning = jsonReply(ok(QJsonArray{hour(10, 5), hour(11, 6)}));
        fake->http->on("weather/weather-json", morning);
        show();
        fake->run(0);
        // Nothing for 14 o'clock: the record stays nil and the labels read 0.
        QVERIFY(home->dictionaryWeather.isUndefined());
        QCOMPARE(home->lblWeatherTemprature->text(), QStringLiteral("0"));
        QCOMPARE(home->imgWeatherCondition->imageUrl(), QUrl("http://svc.test/static/media/images/weather/(null)_day.svg"));
        // An empty day writes the panel too: no record, all 0, and the date.
        home->lblWeatherWind->setText(QString());
        fake->http->on("weather/weather-json", jsonReply(ok(QJsonArray{})));
        home->getWeatherInfo();
        fake->run(0);
        QCOMPARE(home->lblWeatherWind->text(), QStringLiteral("0"));
        QVERIFY(!home->lblWeatherDate->text().isEmpty());
        fake->http->on("weather/weather-json", jsonReply(ok(QJsonArray{hour(14, 17.8), hour(15, 19)})));
        home->getWeatherInfo();
        fake->run(0);
        QCOMPARE(home->lblWeatherTemprature->text(), QStringLiteral("17"));
        fake->clock->setNow(QDateTime(QDate(2026, 3, 5), QTime(16, 0)));
        fake->http->on("weather/weather-json", morning);
        home->getWeatherInfo();
        fake->run(0);
        // The hour of the earlier reply stays.
        QCOMPARE(home->dictionaryWeather.toObject().value("time").toInt(), 14);
        QCOMPARE(home->lblWeatherTemprature->text(), QStringLiteral("17"));
    }

    void aBadStatusAsksAgainEveryThreeSecondsAndAFailureDoesNot() {
        signedIn("farmer");
        fake->http->on("weather/weather-json", jsonReply(QJsonObject{{"status", 500}, {"message", "x"}}));
        show();
        fake->run(0);
        QCOMPARE(home->lblWeatherLocation->text(), QStringLiteral("Çumra"));
        QCOMPARE(weatherRequests().size(), 1);
        fake->run(2999);
        QCOMPARE(weatherRequests().size(), 1);
        fake->run(1);
        QCOMPARE(weatherRequests().size(), 2);
        fake->run(3000);
        QCOMPARE(weatherRequests().size(), 3);

        fake->http->on("weather/weather-json", [](const platform::HttpRequest&) { return transportFailure(); });
        fake->run(3000);
        QCOMPARE(weatherRequests().size(), 4);
        fake->run(10000);
        QCOMPARE(weatherRequests().size(), 4);
    }

    // Adding a farm.

    void thePanelOffersUpToFourProductsAndChecksNothing() {
        signedIn("farmer");
        fake->http->on("produces", jsonReply(ok(QJsonObject{{"produces", QJsonArray{QJsonObject{{"id", 1}, {"name", "Buğday"}},
                                                                                    QJsonObject{{"id", 7}, {"name", "Şeker Pancarı"}}}}})));
        QJsonArray aps;
        for (int i = 1; i <= 5; ++i) aps.append(QJsonObject{{"id", 100 + i}, {"name", QStringLiteral("Ürün%1<sup>&reg;</sup>").arg(i)}});
        fake->http->on("produce/aps", jsonReply(ok(QJsonObject{{"aps", aps}})));
        fake->http->on("produce/set", jsonReply(QJsonObject{{"status", 400}, {"errors", QJsonObject{{"range", "Tarla büyüklüğünü girmediniz."}}}}));
        show();
        fake->run(0);
        home->cropEditor()->openNewProduceView();
        QVERIFY(!nav->navigationBar()->userInteractionEnabled());
        // The crop panel closed with nothing chosen reads "Ürün Seç" here.
        home->cropEditor()->openPlantsView();
        home->cropEditor()->selectPlant(1);
        QCOMPARE(home->cropEditor()->lblFarm->text(), QStringLiteral("Şeker Pancarı"));
        home->cropEditor()->openPlantsView();
        home->cropEditor()->selectPlant(1);
        QCOMPARE(home->cropEditor()->lblFarm->text(), QStringLiteral("Ürün Seç"));
        QVERIFY(home->cropEditor()->viewPlant->isHidden());

        home->cropEditor()->openProductView();
        QVERIFY(home->cropEditor()->arrSelectedProducts.isEmpty());
        for (int row = 0; row < 5; ++row) home->cropEditor()->selectProduct(row);
        QCOMPARE(home->cropEditor()->arrSelectedProducts.size(), 4);
        QVERIFY(!home->cropEditor()->productCell(4).value("underline").toBool());
        QVERIFY(home->cropEditor()->productCell(3).value("underline").toBool());
        home->cropEditor()->acceptProductView();
        QCOMPARE(home->cropEditor()->lblProduct->text(), QStringLiteral("Ürün1®\nÜrün2®\nÜrün3®\nÜrün4®"));

        // No crop and no size: sent all the same, and the service's word is shown.
        home->cropEditor()->addProduct();
        fake->run(0);
        const QJsonObject sent = bodyOf(fake->http->requestsFor("produce/set").first());
        QVERIFY(!sent.contains("produceId"));
        QCOMPARE(sent.value("range").toDouble(), 0.0);
        QCOMPARE(sent.value("aps").toArray(), (QJsonArray{101, 102, 103, 104}));
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->message(), QStringLiteral("Tarla büyüklüğünü girmediniz."));
        QVERIFY(!home->cropEditor()->viewNewProduce->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void anAcceptedFarmClosesThePanelAndReloads() {
        signedIn("farmer");
        fake->http->on("produces", jsonReply(ok(QJsonObject{{"produces", QJsonArray{QJsonObject{{"id", 1}, {"name", "Buğday"}}}}})));
        fake->http->on("produce/set", jsonReply(ok(QJsonObject{})));
        show();
        fake->run(0);
        const int farmLists = fake->http->requestsFor("farmer/produces").size();
        home->cropEditor()->openNewProduceView();
        home->cropEditor()->openPlantsView();
        home->cropEditor()->selectPlant(0);
        home->cropEditor()->txtFarmSize->setText("12.5");
        home->cropEditor()->addProduct();
        fake->run(0);
        const QJsonObject sent = bodyOf(fake->http->requestsFor("produce/set").first());
        QCOMPARE(sent.value("produceId").toInt(), 1);
        QCOMPARE(sent.value("range").toDouble(), 12.5);
        QVERIFY(!sent.contains("aps"));
        QVERIFY(home->cropEditor()->viewNewProduce->isHidden());
        QVERIFY(nav->navigationBar()->userInteractionEnabled());
        QCOMPARE(fake->http->requestsFor("farmer/produces").size(), farmLists + 1);
    }

    void listsThatAreRefusedStayAsTheyWere() {
        signedIn("farmer");
        fake->http->on("produces", jsonReply(QJsonObject{{"status", 400}, {"data", QJsonObject{{"produces", QJsonArray{QJsonObject{{"id", 1}}}}}}}));
        show();
        fake->run(0);
        QVERIFY(home->cropEditor()->arrPlants.isEmpty());
        QCOMPARE(home->cropEditor()->constCollPlantHeight->constant(), 0.0);
    }

    // Consent, contact, bell.

    void consentAnswersGoOutAndThePanelGoesWhateverTheAnswer() {
        signedIn("farmer");
        fake->http->on("farmer/etk", jsonReply(QJsonObject{{"status", 400}, {"errors", QJsonObject{{"etk-sms", "x"}}}}));
        show();
        home->consentPanel()->viewKVKK->setHidden(false);
        home->consentPanel()->radioETK2->tap();
        home->consentPanel()->setETKinfo();
        fake->run(0);
        const QJsonObject sent = bodyOf(fake->http->requestsFor("farmer/etk").first());
        QCOMPARE(sent.value("etk-sms").toString(), QStringLiteral("0"));
        QCOMPARE(sent.value("etk-email").toString(), QStringLiteral("1"));
        QCOMPARE(sent.value("etk-advertising").toString(), QStringLiteral("0"));
        QVERIFY(home->consentPanel()->viewKVKK->isHidden());

        // A tap again clears a box; three refusals are an answer too. A failure keeps the panel.
        home->consentPanel()->radioETK2->tap();
        home->consentPanel()->viewKVKK->setHidden(false);
        fake->http->on("farmer/etk", [](const platform::HttpRequest&) { return transportFailure(); });
        home->consentPanel()->setETKinfo();
        fake->run(0);
        const QJsonObject refused = bodyOf(fake->http->requestsFor("farmer/etk").last());
        for (const char* key : {"etk-sms", "etk-email", "etk-advertising"}) QCOMPARE(refused.value(key).toString(), QStringLiteral("0"));
        QVERIFY(!home->consentPanel()->viewKVKK->isHidden());
    }

    void theRegionalContactIsCalledAfterAQuestion() {
        signedIn("farmer");
        QList<QUrl> opened;
        fake->platform->application().setUrlOpener([&](const QUrl& url) {
            opened << url;
            return true;
        });
        show();
        home->callPerson();
        platform::AlertController* alert = fake->alert();
        QVERIFY(alert);
        QCOMPARE(alert->message(),
                 QStringLiteral("Size en yakın Zelmar yetkilisi Serdar Akin aranacaktır. 05301110011 no'lu numara aransın mı?"));
        alert->tapButton(0);
        QCOMPARE(opened, QList<QUrl>{QUrl("tel:05301110011")});
    }

    // The bell's own rules are the notice tests'; here, that the home wears it.
    void theBellCountsUnreadNotices() {
        signedIn("farmer");
        int unread = 5;
        fake->http->on("notifications", [&](const platform::HttpRequest&) { return jsonReply(ok(QJsonObject{{"unreadCount", unread}})); });
        show();
        fake->run(0);
        QCOMPARE(home->btnNotification->badgeValue(), QStringLiteral("5"));
        const auto counts = fake->http->requestsFor("notifications");
        QCOMPARE(queryValues(counts.value(0), "ignore_read"), QStringList{"1"});
        unread = 0;
        fake->platform->notificationCenter().postNotificationName("checkNotifBadge");
        fake->run(0);
        QCOMPARE(home->btnNotification->badgeValue(), QString(""));
    }

private:
    void signedIn(const QString& type) { fake->store->setJson("userInfo", userRecord(type)); }

    // The home as the first content of the side menu, in a window.
    void show(std::function<void(platform::SideMenuViewController*)> prepare = {}) {
        root = new platform::SideMenuViewController;
        nav = new platform::NavigationController;
        home = new home::ViewController;
        nav->setViewControllers({home});
        root->setContentViewController(nav);
        if (prepare) prepare(root);
        fake->platform->window().setRootViewController(root);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
    }

    void loadFarms(const QJsonArray& farms) {
        signedIn("farmer");
        fake->http->on("farmer/produces", jsonReply(ok(QJsonObject{{"farmerProduces", farms}})));
        show();
        fake->run(0);
    }

    QString contentTop() const {
        auto* content = qobject_cast<platform::NavigationController*>(root->contentViewController());
        if (!content || !content->topViewController()) return {};
        auto* top = content->topViewController();
        return top->objectName().isEmpty() ? top->className() : top->objectName();
    }

    QList<platform::HttpRequest> weatherRequests() const { return fake->http->requestsFor("weather/weather-json"); }

    FakePlatform* fake = nullptr;
    platform::SideMenuViewController* root = nullptr;
    platform::NavigationController* nav = nullptr;
    home::ViewController* home = nullptr;
};

QTEST_GUILESS_MAIN(HomeTest)
#include "tst_home.moc"
