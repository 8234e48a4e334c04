// The week's list and the day's screen against scripted replies: what the cards read, which day goes
// to the day screen, the hours and the chosen hour's values, and how favourites are chosen and kept.

#include "FakePlatform.h"
#include "platform/NavigationController.h"
#include "service/LocalStore.h"
#include "weather/WeatherDetailInfoViewController.h"
#include "weather/WeatherDetailViewController.h"
#include "weather/WeatherScreens.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using weather::WeatherDetailInfoViewController;
using weather::WeatherDetailViewController;

namespace {

QJsonObject envelope(const QJsonValue& data) { return QJsonObject{{"status", 200}, {"message", ""}, {"errors", QJsonObject{}}, {"data", data}}; }

QJsonArray week(int days) {
    QJsonArray list;
    for (int i = 0; i < days; ++i)
        list.append(QJsonObject{{"date", QStringLiteral("%1 Mayıs Perşembe").arg(14 + i)}, {"dateYmd", QStringLiteral("2026-05-%1").arg(14 + i)},
                                {"maxTemp", 24.8}, {"minTemp", -2.6}, {"rainRisk", 35.5}, {"precipitation", 1.9}, {"pictocode", 3}});
    return list;
}

// Hours 0 to count - 1; the ninth hour has a pictogram the table does not know.
QJsonArray hours(int count = 24) {
    QJsonArray list;
    for (int h = 0; h < count; ++h)
        list.append(QJsonObject{{"time", h}, {"temperature", 10 + h * 0.5}, {"precipitation", 0.4}, {"windspeed", 12},
                                {"winddirection", h == 9 ? 45 : 220}, {"pictocode", h == 9 ? 99 : h == 10 ? 0 : 22}});
    return list;
}

QString key(const QJsonValue& entry) { return entry.toObject().keys().value(0); }

} // namespace

class WeatherScreensTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        weather::registerScreens();
        fake->store->setString("token", "tok-1");
        fake->store->setJson("weatherKeys", service::LocalStore::defaultWeatherKeys());
        service::LocalStore::setUserInfo(QJsonObject{
            {"location", QJsonObject{{"county", QJsonObject{{"name", "Polatlı"}, {"latitude", 39.58}, {"longitude", 32.14}}}}}});
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"unreadCount", 2}})));
        fake->http->on("weather/weather-weekly", [this](const HttpRequest&) { return jsonReply(envelope(days)); });
        fake->http->on("weather/weather-json", jsonReply(envelope(hours())));
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void weekReadsItsDaysAndHandsTheTappedOneOn() {
        days = week(6);
        auto* screen = new WeatherDetailViewController;
        nav = show(screen);
        fake->run(0);
        QCOMPARE(screen->lblWeatherLocation->text(), QStringLiteral("Polatlı"));
        QCOMPARE(screen->collectionWeather->numberOfRows(), 6);
        const QVariantMap cell = screen->dayCell(0);
        QCOMPARE(cell.value("labelTempMax").toString(), QStringLiteral("24°C"));
        QCOMPARE(cell.value("labelTempMin").toString(), QStringLiteral("-2°C"));
        QCOMPARE(cell.value("labelRainChance").toString(), QStringLiteral("35%"));
        QCOMPARE(cell.value("labelRainSize").toString(), QStringLiteral("1mm"));
        QVERIFY(cell.value("imageConditionUrl").toString().endsWith("/static/media/images/weather/3_day.svg"));
        const HttpRequest request = fake->http->requestsFor("weather/weather-weekly").value(0);
        QVERIFY(request.url.contains("latitude=39.58&longitude=32.14"));
        QVERIFY(request.header("Authorization").isEmpty());
        QCOMPARE(nav->topViewController()->rightBarButtonItem()->badgeValue(), QStringLiteral("2"));

        // An empty week later leaves the days shown.
        days = QJsonArray{};
        screen->getWeatherInfo();
        fake->run(0);
        QCOMPARE(screen->arrayWeather.size(), 6);

        screen->collectionWeather->selectRow(2);
        auto* day = qobject_cast<WeatherDetailInfoViewController*>(nav->topViewController());
        QVERIFY(day);
        QCOMPARE(day->dateYmd, QStringLiteral("2026-05-16"));
        QCOMPARE(day->dateFormatted, QStringLiteral("16 Mayıs Perşembe"));
        fake->run(0);
        QCOMPARE(day->lblWeatherDate->text(), QStringLiteral("16 Mayıs Perşembe"));
        // The hours are today's, whatever the day.
        QVERIFY(fake->http->requestsFor("weather/weather-json").value(0).url.contains("date=2026-05-14"));
    }

    void dayShowsTheChosenHoursFavourites() {
        auto* day = openDay();
        QCOMPARE(day->currentHourIndexPath, 9); // the clock's hour
        QCOMPARE(day->hourCell(9).value("labelHour").toString(), QStringLiteral("9:00"));
        QCOMPARE(day->hourCell(8).value("labelHour").toString(), QStringLiteral("8"));

        // Hour 9: a pictogram past the table shows its picture without a text; the compass text.
        QCOMPARE(day->collectionWeather->numberOfRows(), 5);
        QCOMPARE(day->valueCell(0).value("labelInfo").toString(), QString());
        QVERIFY(day->valueCell(0).value("imageConditionUrl").toString().endsWith("99_day.svg"));
        QCOMPARE(day->valueCell(1).value("labelInfoValue").toString(), QStringLiteral("14.5"));
        QCOMPARE(day->valueCell(3).value("labelInfo").toString(), QStringLiteral("Rüzgar hızı"));
        QCOMPARE(day->valueCell(4).value("labelInfoValue").toString(), QStringLiteral("Kuzeydoğu"));
        QCOMPARE(day->valueCell(4).value("imageFav").toString(), QStringLiteral("favFilled"));

        // Hour 11, then hour 10 without a pictogram: the condition row keeps what it showed.
        day->collectionWeatherHours->selectRow(11);
        QCOMPARE(day->valueCell(0).value("labelInfo").toString(), QStringLiteral("Kapalı"));
        QCOMPARE(day->valueCell(4).value("labelInfoValue").toString(), QStringLiteral("Güneybatı"));
        day->collectionWeatherHours->selectRow(10);
        QCOMPARE(day->valueCell(0).value("labelInfo").toString(), QStringLiteral("Kapalı"));
        QCOMPARE(day->hourCell(11).value("labelHour").toString(), QStringLiteral("11"));

        // The list came to rest: the nearest cell to the middle wins, the first of two equally near.
        day->scrollViewDidEndDecelerating({QVariantMap{{"item", 14}, {"centerX", 150.0}}, QVariantMap{{"item", 15}, {"centerX", 250.0}}}, 100, 100);
        QCOMPARE(day->currentHourIndexPath, 14);
    }

    void anHourMissingDrawsNothingForIt() {
        fake->http->on("weather/weather-json", jsonReply(envelope(hours(23))));
        fake->clock->setNow(QDateTime(QDate(2026, 5, 14), QTime(23, 10)));
        auto* day = openDay();
        QCOMPARE(day->collectionWeatherHours->numberOfRows(), 24);
        QCOMPARE(day->hourCell(23).value("labelHour").toString(), QString());
        QCOMPARE(day->valueCell(1).value("labelInfoValue").toString(), QString());
        QCOMPARE(day->valueCell(1).value("labelInfo").toString(), QStringLiteral("Sıcaklık"));
    }

    void favouritesAreChosenInTheSecondMode() {
        auto* day = openDay();
        // In summary mode a tap on a value does nothing.
        day->collectionWeather->selectRow(1);
        QCOMPARE(fake->store->jsonForKey("weatherKeys").toArray().size(), 5);

        day->changeFavList(day->btnFavList);
        QCOMPARE(day->btnFavList->title(), QStringLiteral("ÖZET"));
        QCOMPARE(day->valueCell(3).value("labelInfo").toString(), QStringLiteral("Rüzgar Hızı"));
        day->collectionWeather->selectRow(0); // the condition goes
        day->collectionWeather->selectRow(2); // the rain goes
        QCOMPARE(day->valueCell(2).value("imageFav").toString(), QStringLiteral("favEmpty"));
        // The capitalised wind label is no stored entry: a second one with the same key comes.
        day->collectionWeather->selectRow(3);
        QJsonArray keys = fake->store->jsonForKey("weatherKeys").toArray();
        QCOMPARE(keys.size(), 4);
        QCOMPARE(keys.at(3).toObject().value("windspeed").toString(), QStringLiteral("Rüzgar Hızı"));
        QCOMPARE(keys.at(1).toObject().value("windspeed").toString(), QStringLiteral("Rüzgar hızı"));

        // Back to the summary: the condition no longer leads, so row 0 is the temperature.
        day->changeFavList(day->btnFavList);
        QCOMPARE(day->btnFavList->title(), QStringLiteral("DETAYLAR"));
        QCOMPARE(day->collectionWeather->numberOfRows(), 4);
        QCOMPARE(day->valueCell(0).value("labelInfo").toString(), QStringLiteral("Sıcaklık"));
        QCOMPARE(day->valueCell(0).value("imageCondition").toString(), QStringLiteral("temperature"));
        QVERIFY(day->viewEmptyScreen->isHidden());

        // A condition entry below row 0 is an ordinary row with an empty label and no value.
        fake->store->setJson("weatherKeys", QJsonArray{QJsonObject{{"temperature", "Sıcaklık"}}, QJsonObject{{"weatherCondition", ""}}});
        day->changeFavList(day->btnFavList);
        day->changeFavList(day->btnFavList);
        QCOMPARE(day->valueCell(1).value("labelInfo").toString(), QString());
        QCOMPARE(day->valueCell(1).value("imageCondition").toString(), QStringLiteral("weatherCondition"));

        // Nothing left: the empty notice shows.
        fake->store->setJson("weatherKeys", QJsonArray{});
        day->changeFavList(day->btnFavList);
        day->changeFavList(day->btnFavList);
        QCOMPARE(day->collectionWeather->numberOfRows(), 0);
        QVERIFY(!day->viewEmptyScreen->isHidden());
    }

    void theRowNumberedLikeTheChosenHourCannotBeToggled() {
        fake->clock->setNow(QDateTime(QDate(2026, 5, 14), QTime(2, 0)));
        auto* day = openDay();
        day->changeFavList(day->btnFavList);
        day->collectionWeather->selectRow(2);
        QCOMPARE(fake->store->jsonForKey("weatherKeys").toArray().size(), 5);
        day->collectionWeather->selectRow(1);
        QCOMPARE(fake->store->jsonForKey("weatherKeys").toArray().size(), 4);
        for (const auto& entry : fake->store->jsonForKey("weatherKeys").toArray()) QVERIFY(key(entry) != "temperature");
    }

private:
    platform::NavigationController* show(platform::ViewController* screen) {
        auto* n = new platform::NavigationController;
        n->setViewControllers({screen});
        fake->platform->window().setRootViewController(n);
        fake->platform->window().makeKeyAndVisible();
        return n;
    }
    WeatherDetailInfoViewController* openDay() {
        auto* day = new WeatherDetailInfoViewController;
        day->dateFormatted = QStringLiteral("14 Mayıs Perşembe");
        nav = show(day);
        fake->run(0);
        return day;
    }

    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
    QJsonArray days;
};

QTEST_GUILESS_MAIN(WeatherScreensTest)
#include "tst_weather_screens.moc"
