#include "farms/Calendar.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <vector>

namespace ekinora::server::farms {

namespace {

Json absolute(const Json& path, const std::string& baseUrl) {
    if (!path.is_string()) return nullptr;
    return baseUrl + path.get<std::string>();
}

} // namespace

std::string pestPagePath(const std::string& slug) {
    return "/zirai-sorunlar/" + slug;
}

std::string productPicturePath(std::int64_t productId) {
    return "/static/media/aps/" + std::to_string(productId) + ".svg";
}

std::string periodDocumentPath(std::int64_t periodId) {
    return "/documents/periods/" + std::to_string(periodId) + ".pdf";
}

int monthInTurkey(std::int64_t epochSeconds) {
    const std::time_t local = std::time_t(epochSeconds + 3 * 3600); // UTC+3 all year
    std::tm parts{};
    gmtime_r(&local, &parts);
    return parts.tm_mon + 1;
}

Json cropPeriods(Database& db, std::int64_t produceId, const std::string& baseUrl) {
    Json list = Json::array();
    for (const auto& row :
         db.query("SELECT id, name, image_path FROM periods WHERE produce_id = ? ORDER BY id", {produceId}))
        list.push_back(Json{{"id", row.at("id")},
                            {"name", row.at("name")},
                            {"image", absolute(row.at("image_path"), baseUrl)}});
    return list;
}

Json pestGroups(Database& db, std::int64_t periodId, const std::string& baseUrl) {
    const Json pests = db.query("SELECT p.id, p.slug, p.name, p.group_name, p.image_path"
                                " FROM period_pests pp JOIN pests p ON p.id = pp.pest_id"
                                " WHERE pp.period_id = ? ORDER BY pp.position",
                                {periodId});
    std::map<std::int64_t, Json> products;
    for (const auto& row : db.query("SELECT pa.pest_id, a.id, a.name FROM pest_aps pa"
                                    " JOIN aps a ON a.id = pa.ap_id"
                                    " JOIN period_pests pp ON pp.pest_id = pa.pest_id AND pp.period_id = ?"
                                    " ORDER BY pa.pest_id, pa.position",
                                    {periodId})) {
        const auto id = row.at("id").get<std::int64_t>();
        auto& list = products[row.at("pest_id").get<std::int64_t>()];
        if (list.is_null()) list = Json::array();
        list.push_back(
            Json{{"id", id}, {"name", row.at("name")}, {"image", baseUrl + productPicturePath(id)}});
    }

    // Groups keyed by name, kept in the order they are to be shown.
    std::vector<std::string> order = {WeedsGroup, CreaturesGroup};
    std::map<std::string, Json> groups;
    for (const auto& row : pests) {
        const auto group = row.at("group_name").get<std::string>();
        if (std::find(order.begin(), order.end(), group) == order.end()) order.push_back(group);
        const auto id = row.at("id").get<std::int64_t>();
        auto found = products.find(id);
        groups[group].push_back(Json{{"id", id},
                                     {"name", row.at("name")},
                                     {"image", absolute(row.at("image_path"), baseUrl)},
                                     {"path", pestPagePath(row.at("slug").get<std::string>())},
                                     {"aps", found != products.end() ? found->second : Json::array()}});
    }

    Json out = Json::array();
    for (const auto& name : order)
        if (auto group = groups.find(name); group != groups.end())
            out.push_back(Json{{"name", name}, {"data", std::move(group->second)}});
    return out;
}

} // namespace ekinora::server::farms
