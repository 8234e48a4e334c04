#include "market/Market.h"

#include <QTest>

#include "TestSupport.h"

#include <cmath>
#include <regex>

using namespace ekinora::server;
using namespace testing;

namespace {

constexpr std::int64_t MidMay = 1715763600; // 15 May 2024, noon in Turkey
constexpr std::int64_t Day = 86400;

} // namespace

// Crop prices of the two sources, by product group and place, moving day by day.
class MarketTest : public ServiceTest {
    Q_OBJECT

    Json produces(const std::string& query, const std::string& token = Farmer) {
        return s->get("/api/?do=agrivo/produces&" + query, token).json;
    }
    static Json named(const Json& list, const std::string& name) {
        for (const auto& row : list)
            if (row["name"] == name) return row;
        return nullptr;
    }

public:
    MarketTest() : ServiceTest(MidMay) {}

private slots:

    void bothSourcesListCropsWithTheirPricesAndIcons() {
        const Json exchange = produces("type=B&strict_location=0");
        QCOMPARE(exchange["status"].get<int>(), 200);
        const Json crops = exchange["data"]["produces"];
        QVERIFY(!named(crops, "Buğday").is_null() && named(crops, "Domates").is_null());
        for (const auto& crop : crops) {
            QVERIFY(crop["agrivoid"].is_number_integer());
            QVERIFY(!crop["prices"].empty());
            for (const auto& price : crop["prices"]) {
                QVERIFY(price["min"].get<double>() > 0 && price["min"] <= price["max"]);
                QVERIFY(!price["CityName"].get<std::string>().empty());
            }
            const auto icon = s->get("/static/media/images/icons/ic_" + crop["agrivoid"].dump() + ".png");
            QCOMPARE(icon.http, 200);
            QCOMPARE(q(icon.contentType), QStringLiteral("image/png"));
        }
        // The farmer's own city leads where it trades the crop.
        QCOMPARE(q(named(crops, "Nohut")["prices"][0]["CityName"].get<std::string>()), QStringLiteral("Konya"));
        QCOMPARE(q(exchange["data"]["farmer"]["location"]["city"]["name"].get<std::string>()), QStringLiteral("Konya"));
        const Json market = produces("type=H", Dealer);
        QVERIFY(!named(market["data"]["produces"], "Domates").is_null());
        QVERIFY(market["data"]["farmer"].is_null());
    }

    void keptToTheFarmersCityCropsTradedElsewhereHaveNoPrice() {
        const Json crops = produces("type=B&strict_location=1")["data"]["produces"];
        for (const auto& crop : crops)
            for (const auto& price : crop["prices"]) QCOMPARE(q(price["CityName"].get<std::string>()), QStringLiteral("Konya"));
        QVERIFY(named(crops, "Fındık")["prices"].empty());
        QCOMPARE(named(crops, "Buğday")["prices"].size(), size_t(1));
    }

    void groupsFilterAndBadValuesAreRefused() {
        const Json categories = s->get("/api/?do=produce/categories", Farmer).json["data"]["categories"];
        QCOMPARE(q(categories[0]["name"].get<std::string>()), QStringLiteral("Hububat"));
        const Json grains = produces("type=B&category=" + categories[0]["id"].dump())["data"]["produces"];
        QVERIFY(!named(grains, "Arpa").is_null() && named(grains, "Nohut").is_null());
        // Vegetables are not quoted on the exchanges.
        QVERIFY(produces("type=B&category=5")["data"]["produces"].empty());
        QCOMPARE(produces("type=X")["status"].get<int>(), 400);
        QCOMPARE(produces("type=H&category=abc")["status"].get<int>(), 400);
    }

    void pricesAreFixedForADayAndMoveBelievablyAcrossTheYear() {
        const Json morning = produces("type=B");
        *s->now = MidMay + 5 * 3600;
        QVERIFY(produces("type=B") == morning);
        // Over a year a variety stays within a fifth of its level, moves every day, and never jumps more
        // than a tenth from one day to the next.
        double low = 1e9, high = 0, previous = 0;
        int moves = 0;
        for (std::int64_t day = 19000; day < 19365; ++day) {
            const auto quote = market::quoteOf(1, 10.40, "Konya", 1.0, day);
            QVERIFY(quote.min < quote.max);
            const double middle = (quote.min + quote.max) / 2;
            low = std::min(low, middle);
            high = std::max(high, middle);
            if (previous > 0) {
                QVERIFY(std::abs(middle - previous) / previous < 0.10);
                if (middle != previous) ++moves;
            }
            previous = middle;
        }
        QVERIFY(low > 10.40 * 0.8 && high < 10.40 * 1.2);
        QVERIFY(moves > 350);
    }

    void detailsGiveEveryVarietyInEveryCity() {
        const Json wheat = named(produces("type=B")["data"]["produces"], "Buğday");
        const Json reply = s->get("/api/?do=agrivo/produce/details&type=B&produce=" + wheat["agrivoid"].dump(), Farmer).json;
        QCOMPARE(reply["status"].get<int>(), 200);
        const Json rows = reply["data"]["prices"];
        QCOMPARE(rows.size(), size_t(3 * 6)); // three varieties, six cities
        const std::regex stamp(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)");
        for (const auto& row : rows) {
            QCOMPARE(q(row["CropName"].get<std::string>()), QStringLiteral("Buğday"));
            QVERIFY(std::regex_match(row["LastUpdatedDate"].get<std::string>(), stamp));
            QVERIFY(row["LastUpdatedDate"].get<std::string>().rfind("2024-05-15", 0) == 0);
            QVERIFY(row["MinPrice"] <= row["MaxPrice"]);
        }
        // Wrong source: no rows; unknown crop: refused.
        QVERIFY(s->get("/api/?do=agrivo/produce/details&type=H&produce=" + wheat["agrivoid"].dump(), Farmer)
                    .json["data"]["prices"].empty());
        QCOMPARE(s->get("/api/?do=agrivo/produce/details&type=B&produce=999", Farmer).status(), 400);
    }
};

QTEST_GUILESS_MAIN(MarketTest)
#include "MarketTest.moc"
