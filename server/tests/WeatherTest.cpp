#include "weather/WeatherCommands.h"

#include <QTest>

#include "TestSupport.h"

#include <cmath>
#include <map>
#include <set>

using namespace ekinora::server;
using namespace testing;

namespace {

// What the weather requests carry: a content type, no token.
const httplib::Headers AppHeaders{{"Content-Type", "application/json; charset=UTF-8"}};

// 2024-03-10 22:30 UTC: already 11 March, 01:30, in the country.
constexpr std::int64_t FixedNow = 1710109800;

// County centres as the user record gives them.
const char* const Cumra = "latitude=37.5732&longitude=32.7803";  // Konya
const char* const Aladag = "latitude=37.5468&longitude=35.3951"; // Adana

const std::set<int> SnowCodes{24, 26, 29, 32, 34};
const std::set<int> RainCodes{23, 25, 27, 28, 30, 31, 33};

std::int64_t day(int year, int month, int dayOfMonth) {
    return weather::dayNumber({year, month, dayOfMonth});
}

} // namespace

class WeatherTest : public QObject {
    Q_OBJECT

    std::unique_ptr<testing::Service> s;
    std::unique_ptr<weather::WeatherService> m_weather;

    Reply get(const std::string& target) { return s->get(target, AppHeaders); }
    Json hours(const std::string& query) {
        const auto reply = get("/api/?do=weather/weather-json&" + query);
        return reply.status() == 200 ? reply.json["data"] : Json();
    }
    weather::Place place(double latitude, double longitude) {
        auto found = m_weather->placeAt(latitude, longitude);
        if (!found) qFatal("no place at %f %f", latitude, longitude);
        return *found;
    }

private slots:
    void initTestCase() {
        s = std::make_unique<testing::Service>();
        *s->now = FixedNow;
        s->client->set_url_encode(false);
        m_weather = std::make_unique<weather::WeatherService>(*s->db, [] { return FixedNow; });
    }

    void cleanupTestCase() {
        m_weather.reset();
        s.reset();
    }

    void hourlyRecords() {
        const Json data = hours(std::string(Cumra) + "&date=2024-07-15");
        QCOMPARE(int(data.size()), 24);
        for (int h = 0; h < 24; ++h) {
            const Json& record = data[size_t(h)];
            QVERIFY(
                (keys(record) == std::vector<std::string>{"time", "temperature", "precipitation", "windspeed",
                                                          "winddirection", "relativehumidity", "pictocode"}));
            QCOMPARE(record["time"].get<int>(), h);
            QVERIFY(record["temperature"].is_number() && record["precipitation"].is_number() &&
                    record["windspeed"].is_number());
            QVERIFY(record["winddirection"].is_number_integer() && record["pictocode"].is_number_integer());
        }
    }

    void sameQuestionSameAnswer() {
        const std::string query = std::string(Cumra) + "&date=2024-04-02";
        const Json first = hours(query);
        QVERIFY(first.is_array());
        QCOMPARE(q(hours(query)), q(first));
        // The same point written otherwise gets the same hours.
        QCOMPARE(q(hours("latitude=37.57320&longitude=32.780300&date=2024-04-02")), q(first));
        // A new process answers alike: nothing depends on the run.
        Server other{ServerOptions{}};
        httplib::Client client("127.0.0.1", other.start());
        const auto again = Reply::from(client.Get(("/api/?do=weather/weather-json&" + query).c_str()));
        QCOMPARE(q(again.json["data"]), q(first));
        // Another day or another place is other weather.
        QVERIFY(hours(std::string(Cumra) + "&date=2024-04-03") != first);
        QVERIFY(hours(std::string(Aladag) + "&date=2024-04-02") != first);
    }

    void withoutADateItIsTodayInTheCountry() {
        QCOMPARE(q(hours(Cumra)), q(hours(std::string(Cumra) + "&date=2024-03-11")));
        const auto weekly = get(std::string("/api/?do=weather/weather-weekly&") + Cumra).json["data"];
        QCOMPARE(q(weekly[0]["dateYmd"]), QStringLiteral("\"2024-03-11\""));
        QCOMPARE(q(weekly[0]["date"].get<std::string>()), QStringLiteral("11 Mart Pazartesi"));
        QCOMPARE(q(weekly[6]["date"].get<std::string>()), QStringLiteral("17 Mart Pazar"));
    }

    void weekAgreesWithItsDays() {
        const auto reply = get(std::string("/api/?do=weather/weather-weekly&") + Aladag + "&date=2024-02-26");
        QCOMPARE(reply.status(), 200);
        const Json& days = reply.json["data"];
        QCOMPARE(int(days.size()), 7);
        const char* const expected[] = {"2024-02-26", "2024-02-27", "2024-02-28", "2024-02-29",
                                        "2024-03-01", "2024-03-02", "2024-03-03"};
        for (int i = 0; i < 7; ++i) {
            const Json& d = days[size_t(i)];
            QVERIFY((keys(d) == std::vector<std::string>{"date", "dateYmd", "maxTemp", "minTemp", "rainRisk",
                                                         "precipitation", "pictocode", "image"}));
            QCOMPARE(q(d["dateYmd"].get<std::string>()), QString(expected[i]));
            QVERIFY(d["date"].is_string() && d["maxTemp"].is_number() && d["minTemp"].is_number());
            QVERIFY(d["pictocode"].is_number_integer() && d["rainRisk"].is_number_integer());

            const Json day = hours(std::string(Aladag) + "&date=" + expected[i]);
            double high = -100, low = 100, rain = 0;
            for (const auto& hour : day) {
                high = std::max(high, hour["temperature"].get<double>());
                low = std::min(low, hour["temperature"].get<double>());
                rain += hour["precipitation"].get<double>();
            }
            QCOMPARE(d["maxTemp"].get<double>(), high);
            QCOMPARE(d["minTemp"].get<double>(), low);
            QVERIFY(std::abs(d["precipitation"].get<double>() - rain) < 0.05);
            const int risk = d["rainRisk"].get<int>();
            QVERIFY(risk % 5 == 0 && risk >= 0 && risk <= 100);
            QVERIFY2(rain > 0 ? risk >= 50 : risk <= 45, expected[i]);

            // The picture the list loads is there.
            const std::string image = d["image"].get<std::string>();
            const std::string prefix = s->server->baseUrl() + "/static/media/images/weather/";
            QCOMPARE(q(image), q(prefix + std::to_string(d["pictocode"].get<int>()) + "_day.svg"));
            QCOMPARE(get(image.substr(s->server->baseUrl().size())).http, 200);
        }
        QCOMPARE(q(days[3]["date"].get<std::string>()), QStringLiteral("29 Şubat Perşembe"));
    }

    void olderEndpointGivesTheDayWithItsHours() {
        const std::string path = "/legacy-weather/scripts/include/custom/weather.php";
        const auto reply =
            get(path + "?do=getWeatherInformationForDay&type=json&" + Aladag + "&date=2024-02-29");
        QCOMPARE(reply.status(), 200);
        const Json& data = reply.json["data"];
        QCOMPARE(q(data["dateYmd"]), QStringLiteral("\"2024-02-29\""));
        QCOMPARE(q(data["hours"]), q(hours(std::string(Aladag) + "&date=2024-02-29")));
        const Json week =
            get(std::string("/api/?do=weather/weather-weekly&") + Aladag + "&date=2024-02-29").json;
        Json day = data;
        day.erase("hours");
        QCOMPARE(q(day), q(week["data"][0]));

        QCOMPARE(
            q(get(path + "?do=getWeatherInformationForDay&type=xml&" + Aladag).body),
            QStringLiteral(R"({"status":400,"message":"Yalnızca json biçimi desteklenmektedir.",)"
                           R"("errors":{"type":"Yalnızca json biçimi desteklenmektedir."},"data":null})"));
        QCOMPARE(get(path + "?do=somethingElse&" + Aladag).status(), 404);
        QCOMPARE(
            get("/legacy-weather/weather.php?do=getWeatherInformationForDay&" + std::string(Aladag)).http,
            404);
    }

    void badParameters_data() {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("errors");
        const QString lat = QStringLiteral(R"("latitude":"Lütfen geçerli bir enlem giriniz.")");
        const QString lon = QStringLiteral(R"("longitude":"Lütfen geçerli bir boylam giriniz.")");
        const QString date = QStringLiteral(R"("date":"Lütfen geçerli bir tarih giriniz.")");
        const QString away =
            QStringLiteral(R"("location":"Bu konum için hava durumu bilgisi bulunmamaktadır.")");
        QTest::newRow("nothing") << "" << lat + "," + lon;
        QTest::newRow("no county in the record")
            << "latitude=(null)&longitude=(null)&date=2024-01-01" << lat + "," + lon;
        QTest::newRow("empty") << "latitude=&longitude=32.7" << lat;
        QTest::newRow("comma decimal") << "latitude=37,57&longitude=32.77" << lat;
        QTest::newRow("exponent") << "latitude=3.7e1&longitude=32.77" << lat;
        QTest::newRow("not a number") << "latitude=nan&longitude=inf" << lat + "," + lon;
        QTest::newRow("beyond the pole") << "latitude=91&longitude=32.77" << lat;
        QTest::newRow("beyond the date line") << "latitude=37.5&longitude=180.5" << lon;
        QTest::newRow("outside the country") << "latitude=52.52&longitude=13.40" << away;
        QTest::newRow("open sea") << "latitude=34.0&longitude=32.0" << away;
        QTest::newRow("empty date") << std::string(Cumra).append("&date=").c_str() << date;
        QTest::newRow("no such day") << std::string(Cumra).append("&date=2023-02-29").c_str() << date;
        QTest::newRow("day first") << std::string(Cumra).append("&date=15-07-2024").c_str() << date;
        QTest::newRow("no leading zero") << std::string(Cumra).append("&date=2024-7-15").c_str() << date;
        QTest::newRow("all wrong, in order")
            << "latitude=x&longitude=y&date=z" << lat + "," + lon + "," + date;
        QTest::newRow("far and undated") << "latitude=60&longitude=10&date=yar%C4%B1n" << away + "," + date;
    }

    void badParameters() {
        QFETCH(QString, query);
        QFETCH(QString, errors);
        for (const char* command : {"weather/weather-json", "weather/weather-weekly"}) {
            const auto reply = get("/api/?do=" + std::string(command) + "&" + query.toStdString());
            QCOMPARE(reply.http, 200);
            QCOMPARE(reply.status(), 400);
            QCOMPARE(q(reply.json["errors"]), "{" + errors + "}");
            QCOMPARE(q(reply.json["message"]), q(reply.json["errors"].begin().value()));
            QVERIFY(reply.json["data"].is_null());
        }
    }

    void pictogramsAreServed() {
        for (int code = 1; code <= 35; ++code) {
            const auto reply = get("/static/media/images/weather/" + std::to_string(code) + "_day.svg");
            QVERIFY(reply.http == 200 && reply.body.find(R"(viewBox="0 0 64 64")") != std::string::npos);
        }
    }

    // Every county on days of each season: values within nature's bounds, and pictures that
    // match the hour they stand for.
    void plausibleEverywhere() {
        const auto counties = s->db->query("SELECT latitude, longitude FROM counties");
        const std::int64_t days[] = {day(2024, 1, 14), day(2024, 4, 20), day(2024, 7, 28), day(2024, 10, 9)};
        for (const auto& county : counties) {
            const auto where = place(county["latitude"].get<double>(), county["longitude"].get<double>());
            for (const auto n : days) {
                const auto w = weather::forecast(where, n);
                QVERIFY(w.maxTemp - w.minTemp >= 0.5 && w.maxTemp - w.minTemp <= 25);
                for (const auto& h : w.hours) {
                    QVERIFY(h.temperature > -40 && h.temperature < 48);
                    QVERIFY(h.precipitation >= 0 && h.precipitation < 60);
                    QVERIFY(h.windspeed >= 0 && h.windspeed < 120);
                    QVERIFY(h.winddirection >= 0 && h.winddirection < 360);
                    QVERIFY(h.relativehumidity >= 5 && h.relativehumidity <= 100);
                    QVERIFY(h.pictocode >= 1 && h.pictocode <= 35);
                    // Something falls exactly when the picture shows it falling.
                    QCOMPARE(h.precipitation > 0, h.pictocode >= 23);
                    if (SnowCodes.count(h.pictocode)) QVERIFY(h.temperature <= 1.0);
                    if (RainCodes.count(h.pictocode)) QVERIFY(h.temperature > 3.0);
                }
            }
        }
    }

    // A year at five places against what their climates are known for.
    void climateFollowsPlaceAndSeason() {
        struct Year {
            std::map<int, double> meanHigh, meanLow; // by month
            std::map<int, double> rain;              // mm by month
            int snowHours = 0;
            int afternoonHighs = 0, days = 0;
        };
        auto year = [&](double latitude, double longitude) {
            const auto where = place(latitude, longitude);
            Year y;
            std::map<int, int> count;
            for (auto n = day(2023, 1, 1); n < day(2024, 1, 1); ++n) {
                const auto w = weather::forecast(where, n);
                const int month = weather::civilDate(n).month;
                y.meanHigh[month] += w.maxTemp;
                y.meanLow[month] += w.minTemp;
                y.rain[month] += w.precipitation;
                ++count[month];
                int warmest = 0;
                for (const auto& h : w.hours) {
                    if (SnowCodes.count(h.pictocode)) ++y.snowHours;
                    if (h.temperature > w.hours[size_t(warmest)].temperature) warmest = h.time;
                }
                if (w.precipitation == 0) {
                    ++y.days;
                    if (warmest >= 12 && warmest <= 17) ++y.afternoonHighs;
                }
            }
            for (auto& [month, value] : y.meanHigh)
                value /= count[month];
            for (auto& [month, value] : y.meanLow)
                value /= count[month];
            return y;
        };
        auto total = [](const Year& y, std::initializer_list<int> months) {
            double sum = 0;
            for (int m : months)
                sum += y.rain.at(m);
            return sum;
        };
        const Year antalya = year(36.852, 30.7573), erzurum = year(39.9065, 41.2729),
                   rize = year(41.0252, 40.5173), konya = year(37.8923, 32.477),
                   sanliurfa = year(37.1674, 38.7954);

        QVERIFY(antalya.meanHigh.at(7) > 29 && antalya.meanLow.at(1) > 2);
        QVERIFY(sanliurfa.meanHigh.at(7) > 33);
        QVERIFY(erzurum.meanHigh.at(1) < 0 && erzurum.meanLow.at(1) < -8);
        QVERIFY(erzurum.meanHigh.at(7) > 20); // highland summers are warm by day
        for (const Year* y : {&antalya, &erzurum, &rize, &konya, &sanliurfa}) {
            QVERIFY(y->meanHigh.at(7) > y->meanHigh.at(1) + 10);
            QVERIFY(y->afternoonHighs > y->days * 8 / 10);
        }
        // A wet coast against a dry plateau; dry summers in the south, rain all year on the Black Sea.
        const double rizeYear = total(rize, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
        const double konyaYear = total(konya, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
        QVERIFY(rizeYear > 1500 && konyaYear > 200 && konyaYear < 600);
        QVERIFY(total(antalya, {6, 7, 8}) < total(antalya, {12, 1, 2}) / 5);
        QVERIFY(total(rize, {6, 7, 8}) > 150);
        // Snow where winters are cold, never on the Mediterranean coast.
        QVERIFY(erzurum.snowHours > 50);
        QCOMPARE(antalya.snowHours, 0);
    }
};

QTEST_GUILESS_MAIN(WeatherTest)
#include "WeatherTest.moc"
