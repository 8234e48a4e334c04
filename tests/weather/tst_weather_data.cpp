// The weather request's addresses and headers, the pictogram texts and the two wind tables.

#include "FakePlatform.h"
#include "service/ServiceRoots.h"
#include "weather/WeatherApiRequest.h"
#include "weather/WeatherTables.h"

#include <QTest>
#include <cmath>
#include <limits>

using namespace ekinora;
using namespace ekinora::testing;
using namespace ekinora::weather;

class WeatherDataTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        service::Roots::configure(QStringLiteral("http://svc.test"));
    }
    void cleanup() { delete fake; }

    void pictogramTextsKeepTheirRepeatsAndEndAtTheTable() {
        const QStringList& texts = arrayWeatherTypes();
        QCOMPARE(texts.size(), 35);
        for (int code : {2, 3, 4, 5, 6}) QCOMPARE(weatherTypeText(code), QStringLiteral("Az Bulutlu"));
        for (int code : {9, 10, 11, 12, 19, 20}) QCOMPARE(weatherTypeText(code), QStringLiteral("Parçalı Çok Bulutlu"));
        for (int code : {16, 17, 18}) QCOMPARE(weatherTypeText(code), QStringLiteral("Sisli"));
        QCOMPARE(weatherTypeText(1), QStringLiteral("Açık"));
        QCOMPARE(weatherTypeText(35), QStringLiteral("Karla Karışık Yağmurlu"));
        // Outside the table: nothing below it, a stop above it.
        QCOMPARE(weatherTypeText(0), QString());
        QCOMPARE(weatherTypeText(-3), QString());
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, weatherTypeText(36));
    }

    void iconAddressTakesTheCodeAsItArrived() {
        QCOMPARE(weatherIconUrl(3), QStringLiteral("http://svc.test/static/media/images/weather/3_day.svg"));
        QCOMPARE(weatherIconUrl(QStringLiteral("17")), QStringLiteral("http://svc.test/static/media/images/weather/17_day.svg"));
        QCOMPARE(weatherIconUrl(platform::nil()), QStringLiteral("http://svc.test/static/media/images/weather/(null)_day.svg"));
    }

    void windDirectionFromAnAngle_data() {
        QTest::addColumn<float>("angle");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0.0f << "Kuzey";
        QTest::newRow("just below 22.5") << 22.49f << "Kuzey";
        QTest::newRow("22.5") << 22.5f << "Kuzeydoğu";
        QTest::newRow("157.5") << 157.5f << "Güney";
        QTest::newRow("just below 337.5") << 337.49f << "Kuzeybatı";
        QTest::newRow("337.5") << 337.5f << "Kuzey";
        QTest::newRow("negative") << -10.0f << "Kuzey";
        QTest::newRow("a full turn") << 360.0f << "Kuzey";
        QTest::newRow("past a full turn") << 400.0f << "Kuzey";
        QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << "";
    }
    void windDirectionFromAnAngle() {
        QFETCH(float, angle);
        QFETCH(QString, text);
        QCOMPARE(getDirectionForAngle(angle), text);
    }

    void windDirectionFromACodeHasItsOwnSpellings() {
        const QStringList codes{"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
        const QStringList texts{"Kuzey", "Kuzey doğu", "Doğu", "Güney Doğu", "Güney", "Güney Batı", "Batı", "Kuzey Batı"};
        for (int i = 0; i < codes.size(); ++i) QCOMPARE(localizeWindType(codes[i]), texts[i]);
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, localizeWindType(QStringLiteral("NNE")));
    }

    void todayGoesOutWhateverDayIsAskedFor() {
        fake->clock->setNow(QDateTime(QDate(2026, 3, 5), QTime(23, 59)));
        fake->store->setString(QStringLiteral("token"), QStringLiteral("secret"));
        WeatherApiRequest request;
        request.latValue = 37.5468;
        request.lonValue = QStringLiteral("32.7812");
        request.dateYMD = QStringLiteral("2026-03-09");
        request.requestData([](const platform::Json&) {}, [](const platform::Json&) {});
        request.requestDetailData([](const platform::Json&) {}, [](const platform::Json&) {});
        request.requestDetailInfoData([](const platform::Json&) {}, [](const platform::Json&) {});

        const auto& sent = fake->http->requests;
        QCOMPARE(sent.size(), 3);
        QCOMPARE(QString::fromUtf8(sent[0].url),
                 QStringLiteral("http://svc.test/api/?do=weather/weather-json&latitude=37.5468&longitude=32.7812&date=2026-03-05"));
        QCOMPARE(QString::fromUtf8(sent[1].url),
                 QStringLiteral("http://svc.test/api/?do=weather/weather-weekly&latitude=37.5468&longitude=32.7812"));
        QCOMPARE(QString::fromUtf8(sent[2].url),
                 QStringLiteral("http://svc.test/legacy-weather/scripts/include/custom/weather.php?do=getWeatherInformationForDay"
                                "&type=json&latitude=37.5468&longitude=32.7812&date=2026-03-09"));
        // Public: no token anywhere, and only the content type of the frame's own headers.
        for (const auto& r : sent) {
            QCOMPARE(r.method, QByteArray("GET"));
            QVERIFY(!r.hasHeader("Authorization"));
            QCOMPARE(r.header("Content-Type"), QByteArray("application/json; charset=UTF-8"));
            QVERIFY(!r.url.contains("bearer"));
            QVERIFY(!r.url.contains("secret"));
            QVERIFY(r.body.isEmpty());
        }
    }

    void repliesAndFailuresReachTheirCallbacks() {
        fake->http->on(QStringLiteral("weather/weather-json"), jsonReply(QJsonObject{{"status", 200}, {"data", QJsonArray{}}}));
        fake->http->on(QStringLiteral("weather/weather-weekly"), jsonReply(QJsonObject{{"errors", QJsonObject{{"latitude", "x"}}}}, 400));
        platform::Json got, failed = QStringLiteral("untouched");
        WeatherApiRequest request;
        request.requestData([&](const platform::Json& r) { got = r; }, [](const platform::Json&) {});
        request.requestDetailData([](const platform::Json&) {}, [&](const platform::Json& e) { failed = e; });
        fake->run(0);
        QCOMPARE(got.toObject().value("status").toInt(), 200);
        QCOMPARE(failed.toObject().value("errors").toObject().value("latitude").toString(), QStringLiteral("x"));
    }

private:
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(WeatherDataTest)
#include "tst_weather_data.moc"
