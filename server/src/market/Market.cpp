#include "market/Market.h"

#include "core/Envelope.h"
#include "core/Params.h"

#include <cmath>
#include <cstdio>
#include <vector>

namespace ekinora::server::market {

namespace {

struct Category {
    std::int64_t id;
    const char* name;
};

const Category Categories[] = {
    {1, "Hububat"},   {2, "Baklagiller"}, {3, "Yağlı Tohumlar"}, {4, "Endüstri Bitkileri"},
    {5, "Sebzeler"},  {6, "Meyveler"},    {7, "Sert Kabuklu Meyveler"},
};

struct Crop {
    std::int64_t agrivoid;
    const char* name;
    const char* source;
    std::int64_t category;
    std::vector<std::pair<const char*, double>> varieties;          // name, TL per kg
    std::vector<std::pair<const char*, double>> places;             // city, price factor
};

// Prices in TL per kilogram, around the levels of a recent season; the first city is the crop's main
// market. The agrivoid numbers the icons under /static/media/images/icons/.
const std::vector<Crop>& crops() {
    static const std::vector<Crop> list = {
        {1, "Buğday", "B", 1, {{"Ekmeklik Anadolu Kırmızı Sert", 10.40}, {"Makarnalık Durum", 11.30}, {"Ekmeklik Beyaz Yumuşak", 9.90}},
         {{"Konya", 1.00}, {"Ankara", 1.01}, {"Eskişehir", 1.02}, {"Tekirdağ", 1.04}, {"Şanlıurfa", 0.98}, {"Edirne", 1.03}}},
        {2, "Arpa", "B", 1, {{"Yemlik", 8.60}, {"Maltlık", 9.20}},
         {{"Konya", 1.00}, {"Ankara", 1.01}, {"Eskişehir", 1.00}, {"Sivas", 0.98}, {"Şanlıurfa", 0.97}}},
        {3, "Mısır", "B", 1, {{"Sarı Mısır", 9.10}, {"Beyaz Mısır", 9.60}},
         {{"Adana", 1.00}, {"Konya", 1.01}, {"Şanlıurfa", 0.99}, {"Samsun", 1.02}}},
        {7, "Çeltik", "B", 1, {{"Osmancık", 17.80}, {"Baldo", 19.60}},
         {{"Edirne", 1.00}, {"Çanakkale", 1.01}, {"Samsun", 0.99}, {"Balıkesir", 1.00}}},
        {9, "Nohut", "B", 2, {{"Koçbaşı", 41.00}, {"Natürel", 36.50}},
         {{"Konya", 1.00}, {"Ankara", 1.01}, {"Yozgat", 0.99}, {"Karaman", 1.00}}},
        {10, "Mercimek", "B", 2, {{"Kırmızı", 32.00}, {"Yeşil", 38.50}},
         {{"Şanlıurfa", 1.00}, {"Gaziantep", 1.02}, {"Diyarbakır", 0.99}, {"Konya", 1.01}}},
        {4, "Ayçiçeği", "B", 3, {{"Yağlık", 19.40}, {"Çerezlik", 27.00}},
         {{"Tekirdağ", 1.00}, {"Edirne", 1.00}, {"Konya", 1.01}, {"Adana", 0.99}}},
        {6, "Kanola", "B", 3, {{"Kanola", 18.70}}, {{"Tekirdağ", 1.00}, {"Edirne", 1.01}, {"Konya", 0.99}}},
        {5, "Pamuk", "B", 4, {{"Kütlü Pamuk", 23.80}, {"Lif Pamuk", 68.00}},
         {{"Şanlıurfa", 1.00}, {"Adana", 1.02}, {"Aydın", 1.03}, {"Diyarbakır", 0.99}, {"Hatay", 1.01}}},
        {8, "Fındık", "B", 7, {{"Levant Kabuklu", 132.00}, {"Giresun Kabuklu", 138.00}},
         {{"Giresun", 1.00}, {"Ordu", 1.00}, {"Trabzon", 0.99}, {"Samsun", 0.98}}},
        {11, "Domates", "H", 5, {{"Sofralık", 18.00}, {"Salkım", 24.00}, {"Çeri", 32.00}},
         {{"Antalya", 1.00}, {"Mersin", 0.98}, {"İzmir", 1.04}, {"Bursa", 1.05}, {"Konya", 1.07}, {"Ankara", 1.08}}},
        {12, "Biber", "H", 5, {{"Sivri", 26.00}, {"Dolmalık", 29.00}, {"Çarliston", 24.00}},
         {{"Antalya", 1.00}, {"Mersin", 0.98}, {"İzmir", 1.04}, {"Konya", 1.07}, {"Ankara", 1.08}}},
        {13, "Patates", "H", 5, {{"Taze", 13.50}, {"Depo", 11.00}},
         {{"Niğde", 1.00}, {"Nevşehir", 1.00}, {"Konya", 1.02}, {"İzmir", 1.08}, {"Ankara", 1.06}}},
        {18, "Soğan", "H", 5, {{"Kuru", 9.50}, {"Taze", 14.00}},
         {{"Ankara", 1.00}, {"Amasya", 0.98}, {"Bursa", 1.03}, {"Konya", 1.01}}},
        {14, "Karpuz", "H", 5, {{"Sofralık", 7.50}},
         {{"Adana", 1.00}, {"Antalya", 1.02}, {"Diyarbakır", 0.97}, {"Konya", 1.06}}},
        {15, "Üzüm", "H", 6, {{"Sultani Çekirdeksiz", 34.00}, {"Siyah", 42.00}},
         {{"Manisa", 1.00}, {"İzmir", 1.04}, {"Denizli", 1.01}, {"Ankara", 1.10}}},
        {16, "Elma", "H", 6, {{"Starking", 21.00}, {"Golden", 19.50}, {"Granny Smith", 24.00}},
         {{"Isparta", 1.00}, {"Karaman", 0.99}, {"Niğde", 1.00}, {"Konya", 1.03}, {"Ankara", 1.06}}},
        {17, "Zeytin", "H", 6, {{"Gemlik Siyah Sofralık", 78.00}, {"Yeşil Kırma", 64.00}},
         {{"Bursa", 1.00}, {"Balıkesir", 0.99}, {"İzmir", 1.02}, {"Manisa", 1.00}}},
    };
    return list;
}

constexpr double Pi = 3.14159265358979323846;

std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
    hash ^= value + 0x9e3779b97f4a7c15ULL + (hash << 6) + (hash >> 2);
    return hash * 0xff51afd7ed558ccdULL;
}

std::uint64_t textHash(const std::string& text) {
    std::uint64_t hash = 1469598103934665603ULL;
    for (unsigned char c : text) hash = (hash ^ c) * 1099511628211ULL;
    return hash;
}

// A value in [0, 1) from a hash.
double unit(std::uint64_t hash) { return double(hash >> 11) / double(1ULL << 53); }

double cents(double value) { return std::round(value * 100.0) / 100.0; }

std::int64_t turkeyDay(std::int64_t seconds) { return (seconds + 3 * 3600) / 86400; }

std::string dateText(std::int64_t day, int minutes) {
    // Civil date of a day count (proleptic Gregorian).
    std::int64_t z = day + 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = unsigned(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const int d = int(doy - (153 * mp + 2) / 5 + 1);
    const int m = int(mp < 10 ? mp + 3 : mp - 9);
    const int y = int(yoe) + int(era * 400) + (m <= 2);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:00", y, m, d, minutes / 60, minutes % 60);
    return text;
}

struct Context {
    Database& db;
    Clock clock;
    std::int64_t today() const { return turkeyDay(clock ? clock() : systemSeconds()); }
};

const std::string SourceInvalid = "Fiyat kaynağı geçersiz.";

// "H" or "B"; otherwise the message goes under "type".
std::optional<std::string> sourceOf(Params& p) {
    const std::string type = p.required("type", SourceInvalid);
    if (!p.ok()) return std::nullopt;
    if (type != "H" && type != "B") {
        p.fail("type", SourceInvalid);
        return std::nullopt;
    }
    return type;
}

std::string accountCity(Database& db, std::int64_t userId) {
    auto row = db.queryRow("SELECT c.name FROM users u JOIN cities c ON c.id = u.city_id WHERE u.id = ?", {userId});
    return row ? row->at("name").get<std::string>() : std::string();
}

Json summaries(const Context& c, std::int64_t agrivoid, const std::string& ownCity, bool strict, std::int64_t day) {
    const Json varieties = c.db.query("SELECT id, base_price FROM market_varieties WHERE agrivoid = ? ORDER BY id", {agrivoid});
    const Json places = c.db.query("SELECT city_name, factor FROM market_places WHERE agrivoid = ? ORDER BY position", {agrivoid});
    Json list = Json::array();
    auto add = [&](const Json& place) {
        const std::string city = place.at("city_name").get<std::string>();
        double low = 0, high = 0;
        bool any = false;
        for (const auto& v : varieties) {
            const Quote q = quoteOf(v.at("id").get<std::int64_t>(), v.at("base_price").get<double>(), city,
                                    place.at("factor").get<double>(), day);
            low = any ? std::min(low, q.min) : q.min;
            high = any ? std::max(high, q.max) : q.max;
            any = true;
        }
        if (any) list.push_back(Json{{"min", low}, {"max", high}, {"CityName", city}});
    };
    // The account's own city leads; kept to it, the others go.
    for (const auto& place : places)
        if (place.at("city_name") == ownCity) add(place);
    if (!strict)
        for (const auto& place : places)
            if (place.at("city_name") != ownCity) add(place);
    return list;
}

Json listProduces(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto source = sourceOf(p);
    std::optional<std::int64_t> category;
    if (p.has("category") && !(category = p.integer("category"))) p.fail("category", "Ürün grubu geçersiz.");
    const Answer strict = p.answer("strict_location");
    if (strict == Answer::Invalid) p.fail("strict_location", "Konum seçimi geçersiz.");
    if (!p.ok()) return p.rejection();

    const std::string city = accountCity(c.db, call.userId);
    const std::int64_t day = c.today();
    const Json rows = category ? c.db.query("SELECT agrivoid, name FROM market_crops WHERE source = ? AND category_id = ?"
                                            " ORDER BY sort_order",
                                            {*source, *category})
                               : c.db.query("SELECT agrivoid, name FROM market_crops WHERE source = ? ORDER BY sort_order",
                                            {*source});
    Json produces = Json::array();
    for (const auto& row : rows)
        produces.push_back(Json{{"name", row.at("name")},
                                {"agrivoid", row.at("agrivoid")},
                                {"prices", summaries(c, row.at("agrivoid").get<std::int64_t>(), city,
                                                     strict == Answer::Yes, day)}});
    const bool farmerSide = call.role == "farmer" || call.role == "loyalty";
    Json farmer = farmerSide && !city.empty() ? Json{{"location", {{"city", {{"name", city}}}}}} : Json(nullptr);
    return envelope::success(Json{{"produces", std::move(produces)}, {"farmer", std::move(farmer)}});
}

Json listCategories(Database& db, const ApiCall&) {
    return envelope::success(Json{{"categories", db.query("SELECT id, name FROM market_categories ORDER BY sort_order")}});
}

Json produceDetails(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto source = sourceOf(p);
    const auto agrivoid = p.requiredInteger("produce", "Ürün seçilmedi.", "Ürün bulunamadı.");
    if (!p.ok()) return p.rejection();
    auto crop = c.db.queryRow("SELECT name, source FROM market_crops WHERE agrivoid = ?", {*agrivoid});
    if (!crop) {
        p.fail("produce", "Ürün bulunamadı.");
        return p.rejection();
    }
    Json prices = Json::array();
    if (crop->at("source") == *source) {
        const std::int64_t day = c.today();
        const Json varieties =
            c.db.query("SELECT id, name, base_price FROM market_varieties WHERE agrivoid = ? ORDER BY id", {*agrivoid});
        for (const auto& place :
             c.db.query("SELECT city_name, factor FROM market_places WHERE agrivoid = ? ORDER BY position", {*agrivoid}))
            for (const auto& v : varieties) {
                const std::string city = place.at("city_name").get<std::string>();
                const Quote q = quoteOf(v.at("id").get<std::int64_t>(), v.at("base_price").get<double>(), city,
                                        place.at("factor").get<double>(), day);
                prices.push_back(Json{{"CropName", crop->at("name")},
                                      {"VarietyName", v.at("name")},
                                      {"MinPrice", q.min},
                                      {"MaxPrice", q.max},
                                      {"LastUpdatedDate", q.updated},
                                      {"CityName", city}});
            }
    }
    return envelope::success(Json{{"prices", std::move(prices)}});
}

} // namespace

Quote quoteOf(std::int64_t varietyId, double basePrice, const std::string& city, double cityFactor, std::int64_t day) {
    const std::uint64_t place = mix(textHash(city), std::uint64_t(varietyId));
    const double phase = unit(mix(place, 1)) * 365.0;
    // A season's swing of about 8 %, a wave of about 3 % over two weeks, a daily step of up to 2 %.
    const double season = 0.08 * std::sin(2 * Pi * (double(day) + phase) / 365.0);
    const double wave = 0.03 * std::sin(2 * Pi * (double(day) + phase * 0.7) / 15.0);
    const double step = 0.02 * (2 * unit(mix(place, std::uint64_t(day))) - 1);
    const double middle = basePrice * cityFactor * (1 + season + wave + step);
    // Each market keeps its own spread between the lowest and the highest sale, 6 to 16 %.
    const double spread = 0.06 + 0.10 * unit(mix(place, 2));
    Quote q;
    q.min = cents(middle * (1 - spread / 2));
    q.max = cents(middle * (1 + spread / 2));
    // Markets publish in the morning, each at its own time between 08:00 and 11:59.
    q.updated = dateText(day, 8 * 60 + int(textHash(city) % 240));
    return q;
}

void seedMarket(Database& db) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM market_categories") > 0) return;
    db.transaction([&] {
        std::int64_t order = 0;
        for (const auto& category : Categories)
            db.execute("INSERT INTO market_categories (id, name, sort_order) VALUES (?, ?, ?)",
                       {category.id, std::string(category.name), ++order});
        order = 0;
        std::int64_t varietyId = 0;
        for (const auto& crop : crops()) {
            db.execute("INSERT INTO market_crops (agrivoid, name, source, category_id, sort_order) VALUES (?, ?, ?, ?, ?)",
                       {crop.agrivoid, std::string(crop.name), std::string(crop.source), crop.category, ++order});
            for (const auto& [name, price] : crop.varieties)
                db.execute("INSERT INTO market_varieties (id, agrivoid, name, base_price) VALUES (?, ?, ?, ?)",
                           {++varietyId, crop.agrivoid, std::string(name), price});
            std::int64_t position = 0;
            for (const auto& [city, factor] : crop.places)
                db.execute("INSERT INTO market_places (agrivoid, city_name, factor, position) VALUES (?, ?, ?, ?)",
                           {crop.agrivoid, std::string(city), factor, ++position});
        }
    });
}

void registerMarketCommands(Dispatch& dispatch, Database& db, Clock clock) {
    seedMarket(db);
    const Context c{db, std::move(clock)};
    dispatch.add("agrivo/produces", Access::Account, listProduces, c);
    dispatch.add("produce/categories", Access::Account, listCategories, db);
    dispatch.add("agrivo/produce/details", Access::Account, produceDetails, c);
}

} // namespace ekinora::server::market
