#include "accounts/Accounts.h"

#include <random>

namespace ekinora::server::accounts {

std::vector<int> defaultMenu(const std::string& type) {
    if (type == "farmer") return {0, 1, 3, 5, 4, 12, 15, 16, 17, 9, 19, 6, 7, 8, 13, 14};
    if (type == "loyalty") return {0, 18, 1, 3, 5, 9, 19, 4, 12, 15, 16, 17, 6, 7, 8, 13, 14};
    if (type == "dealer") return {5, 2, 10, 11, 15, 16, 17, 6, 7, 8, 14};
    if (type == "adminUser") return {5, 15, 16, 17, 6, 7, 8, 14};
    return {};
}

std::optional<Caller> userForToken(Database& db, const std::string& token) {
    if (token.empty()) return std::nullopt;
    auto row = db.queryRow("SELECT u.id, u.type FROM tokens t JOIN users u ON u.id = t.user_id "
                           "WHERE t.token = ? AND u.active = 1",
                           {token});
    if (!row) return std::nullopt;
    return Caller{row->at("id").get<std::int64_t>(), row->at("type").get<std::string>()};
}

std::string issueToken(Database& db, std::int64_t userId) {
    static thread_local std::mt19937_64 random{std::random_device{}()};
    static const char digits[] = "0123456789abcdef";
    std::string token;
    token.reserve(64);
    for (int i = 0; i < 16; ++i) {
        const auto word = random();
        for (int shift = 0; shift < 16; shift += 4)
            token.push_back(digits[(word >> shift) & 0xf]);
    }
    db.execute("INSERT INTO tokens (token, user_id) VALUES (?, ?)", {token, userId});
    return token;
}

RegionalContact regionalContact(Database& db, std::int64_t cityId) {
    auto city = db.queryRow("SELECT longitude FROM cities WHERE id = ?", {cityId});
    const double longitude = city ? city->at("longitude").get<double>() : 0.0;
    if (longitude < 31.0) return {"Gülay Sezer", "05301110022"};
    if (longitude < 37.0) return {"Serdar Akın", "05301110011"};
    return {"Okan Yıldız", "05301110033"};
}

std::optional<Json> userRecord(Database& db, std::int64_t userId, const std::string& token) {
    auto row = db.queryRow(
        "SELECT u.id, u.fullname, u.email, u.phone, u.type, u.menu, u.region_fullname, u.region_phonenumber,"
        " c.id AS city_id, c.name AS city_name,"
        " k.id AS county_id, k.name AS county_name, k.latitude, k.longitude"
        " FROM users u LEFT JOIN cities c ON c.id = u.city_id LEFT JOIN counties k ON k.id = u.county_id"
        " WHERE u.id = ?",
        {userId});
    if (!row) return std::nullopt;
    const Json& r = *row;

    Json menu = Json::parse(r.at("menu").get<std::string>(), nullptr, false);
    if (!menu.is_array()) menu = Json::array();

    Json city = nullptr;
    if (!r.at("city_id").is_null()) city = Json{{"id", r.at("city_id")}, {"name", r.at("city_name")}};
    Json county = nullptr;
    if (!r.at("county_id").is_null())
        county = Json{{"id", r.at("county_id")},
                      {"name", r.at("county_name")},
                      {"latitude", r.at("latitude")},
                      {"longitude", r.at("longitude")}};

    Json record = Json::object();
    record["id"] = r.at("id");
    record["fullname"] = r.at("fullname");
    record["email"] = r.at("email");
    record["phone"] = r.at("phone");
    record["type"] = r.at("type");
    record["menu"] = std::move(menu);
    record["token"] = token;
    record["location"] = Json{
        {"city", std::move(city)},
        {"county", std::move(county)},
        {"region", Json{{"fullname", r.at("region_fullname")}, {"phonenumber", r.at("region_phonenumber")}}}};
    return record;
}

} // namespace ekinora::server::accounts
