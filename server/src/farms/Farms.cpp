#include "farms/Farms.h"

#include "farms/Calendar.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>

namespace ekinora::server::farms {

namespace {

const std::string NoCrop = "Ürün seçmediniz.";
const std::string UnknownCrop = "Seçtiğiniz ürün bulunamadı.";
const std::string NoSize = "Tarla büyüklüğünü girmediniz.";
const std::string NegativeSize = "Tarla büyüklüğü 0 dekardan büyük olmalıdır.";
const std::string SizeTooLarge = "Tarla büyüklüğü 10000 dekardan büyük olamaz.";
const std::string UnknownProduct = "Seçtiğiniz zirai ürün bulunamadı.";
const std::string TooManyProducts = "En fazla 3 zirai ürün seçebilirsiniz.";
const std::string TooManyFarms = "En fazla 3 tarla ekleyebilirsiniz.";
const std::string FarmNotFound = "Tarla bulunamadı.";
const std::string UnknownPeriod = "Lütfen geçerli bir dönem seçiniz.";

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// A parameter that was not sent, or sent empty.
bool blank(const Json& value) {
    return value.is_null() || (value.is_string() && trimmed(value.get<std::string>()).empty());
}

// An id as a number or as the text of one.
std::optional<std::int64_t> integerValue(const Json& value) {
    if (value.is_number_integer()) return value.get<std::int64_t>();
    if (value.is_number_float()) {
        const double d = value.get<double>();
        if (std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 1e15) return std::int64_t(d);
        return std::nullopt;
    }
    if (!value.is_string()) return std::nullopt;
    const std::string text = trimmed(value.get<std::string>());
    std::int64_t out = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return out;
}

// A size as a number or as a text, with a decimal point or a decimal comma.
std::optional<double> numberValue(const Json& value) {
    if (value.is_number()) return value.get<double>();
    if (!value.is_string()) return std::nullopt;
    std::string text = trimmed(value.get<std::string>());
    std::replace(text.begin(), text.end(), ',', '.');
    char* end = nullptr;
    const double d = std::strtod(text.c_str(), &end);
    if (text.empty() || *end || !std::isfinite(d)) return std::nullopt;
    return d;
}

// "aps" as the JSON array the app sends, or as the text of one, or ids separated by commas.
std::optional<std::vector<std::int64_t>> idList(const Json& value) {
    Json list = value;
    if (value.is_string()) {
        list = Json::parse(value.get<std::string>(), nullptr, false);
        if (!list.is_array()) {
            list = Json::array();
            const std::string text = value.get<std::string>();
            for (size_t start = 0; start <= text.size();) {
                const size_t comma = std::min(text.find(',', start), text.size());
                if (!trimmed(text.substr(start, comma - start)).empty())
                    list.push_back(text.substr(start, comma - start));
                start = comma + 1;
            }
        }
    } else if (!value.is_array()) {
        list = Json::array({value});
    }
    std::vector<std::int64_t> ids;
    for (const auto& element : list) {
        auto id = integerValue(element);
        if (!id) return std::nullopt;
        if (std::find(ids.begin(), ids.end(), *id) == ids.end()) ids.push_back(*id);
    }
    return ids;
}

Json member(const Json& params, const char* name) {
    auto it = params.find(name);
    return it == params.end() ? Json() : *it;
}

Json rejected(const envelope::FieldErrors& errors) {
    return envelope::rejection(errors.front().second, errors);
}

Json rejected(const std::string& field, const std::string& message) {
    return envelope::rejection(message, {{field, message}});
}

// A whole number of dekar reads as one ("120", not "120.0") in the app's plain text.
Json sizeValue(double size) {
    if (size == std::floor(size) && std::fabs(size) < 1e15) return std::int64_t(size);
    return size;
}

// The farm the parameter "id" names, if it is the caller's.
std::optional<Json> ownFarm(Database& db, const ApiCall& call) {
    auto id = integerValue(member(call.params, "id"));
    if (!id) return std::nullopt;
    return db.queryRow("SELECT id, produce_id, period_id FROM farms WHERE id = ? AND user_id = ?",
                       {*id, call.userId});
}

void storeProducts(Database& db, std::int64_t farmId, const std::vector<std::int64_t>& products) {
    db.execute("DELETE FROM farm_aps WHERE farm_id = ?", {farmId});
    std::int64_t position = 0;
    for (auto product : products)
        db.execute("INSERT INTO farm_aps (farm_id, ap_id, position) VALUES (?, ?, ?)",
                   {farmId, product, ++position});
}

Json records(Database& db, std::int64_t userId, std::optional<std::int64_t> onlyFarm,
             const std::string& baseUrl) {
    const std::string where = onlyFarm ? " WHERE f.user_id = ? AND f.id = ?" : " WHERE f.user_id = ?";
    std::vector<SqlValue> args = {userId};
    if (onlyFarm) args.push_back(*onlyFarm);

    const std::string productsSql = "SELECT fa.farm_id, a.id, a.name FROM farms f"
                                    " JOIN farm_aps fa ON fa.farm_id = f.id JOIN aps a ON a.id = fa.ap_id" +
                                    where + " ORDER BY fa.farm_id, fa.position";
    std::map<std::int64_t, Json> products;
    for (const auto& row : db.query(productsSql, args))
        products[row.at("farm_id").get<std::int64_t>()].push_back(
            Json{{"id", row.at("id")}, {"name", row.at("name")}});

    const std::string farmsSql =
        "SELECT f.id, f.size_dekar, f.period_id, p.id AS produce_id, p.name,"
        " p.image_path, c.farm_image_path, c.period_documents, pe.name AS period_name"
        " FROM farms f JOIN produces p ON p.id = f.produce_id"
        " LEFT JOIN crop_calendars c ON c.produce_id = f.produce_id"
        " LEFT JOIN periods pe ON pe.id = f.period_id" +
        where + " ORDER BY f.id";
    Json list = Json::array();
    for (const auto& row : db.query(farmsSql, args)) {
        const auto id = row.at("id").get<std::int64_t>();
        const Json& periodId = row.at("period_id");
        Json document = nullptr;
        if (row.at("period_documents") == 1 && !periodId.is_null())
            document = Json{{"title", row.at("name").get<std::string>() + " - " +
                                          row.at("period_name").get<std::string>() + " Dönemi"},
                            {"pdf", baseUrl + periodDocumentPath(periodId.get<std::int64_t>())}};
        auto chosen = products.find(id);
        list.push_back(Json{
            {"id", id},
            {"name", row.at("name")},
            {"range", sizeValue(row.at("size_dekar").get<double>())},
            {"aps", chosen != products.end() ? chosen->second : Json::array()},
            {"image", row.at("farm_image_path").is_null()
                          ? Json()
                          : Json(baseUrl + row.at("farm_image_path").get<std::string>())},
            {"period", row.at("period_name")},
            {"period_pdf", std::move(document)},
            {"periodId", periodId},
            {"produceId", row.at("produce_id")},
            {"produce", Json{{"id", row.at("produce_id")},
                             {"name", row.at("name")},
                             {"image", baseUrl + row.at("image_path").get<std::string>()}}},
        });
    }
    return list;
}

} // namespace

std::optional<FarmInput> readFarm(Database& db, const Json& params, envelope::FieldErrors& errors) {
    const auto before = errors.size();
    FarmInput farm;

    const Json crop = member(params, "produceId");
    if (blank(crop)) {
        errors.emplace_back("produceId", NoCrop);
    } else {
        auto id = integerValue(crop);
        if (!id || !db.scalar("SELECT COUNT(*) FROM produces WHERE id = ?", {*id}))
            errors.emplace_back("produceId", UnknownCrop);
        else
            farm.produceId = *id;
    }

    // The app turns an empty or unreadable size field into 0.
    const auto size = numberValue(member(params, "range"));
    if (!size || *size == 0)
        errors.emplace_back("range", NoSize);
    else if (*size < 0)
        errors.emplace_back("range", NegativeSize);
    else if (*size > MaxSizeDekar)
        errors.emplace_back("range", SizeTooLarge);
    else
        farm.size = *size;

    const Json products = member(params, "aps");
    if (!blank(products)) {
        auto ids = idList(products);
        bool known = ids.has_value();
        for (size_t i = 0; known && i < ids->size(); ++i)
            known = db.scalar("SELECT COUNT(*) FROM aps WHERE id = ?", {(*ids)[i]}) > 0;
        if (!known)
            errors.emplace_back("aps", UnknownProduct);
        else if (int(ids->size()) > MaxProducts)
            errors.emplace_back("aps", TooManyProducts);
        else
            farm.products = std::move(*ids);
    }

    if (errors.size() > before) return std::nullopt;
    return farm;
}

std::int64_t createFarm(Database& db, std::int64_t userId, const FarmInput& farm, int month) {
    auto guard = db.lock();
    const auto period = seasonalPeriod(db, farm.produceId, month);
    db.execute("INSERT INTO farms (user_id, produce_id, size_dekar, period_id) VALUES (?, ?, ?, ?)",
               {userId, farm.produceId, farm.size, period ? SqlValue(*period) : SqlValue(nullptr)});
    const auto id = db.lastInsertId();
    storeProducts(db, id, farm.products);
    return id;
}

Json farmRecords(Database& db, std::int64_t userId, const std::string& baseUrl) {
    return records(db, userId, std::nullopt, baseUrl);
}

namespace {

struct Saved {
    std::optional<Json> refusal;
    std::int64_t farmId = 0;
};

// `produce/set`: creates a farm, or with "id" updates one of the caller's. "aps" left out means no
// products: the app sends none when the farmer has deselected them all. Runs in a transaction, so
// that two requests together cannot pass the limit.
Saved saveFarm(Database& db, const ApiCall& call, int month) {
    std::optional<Json> existing;
    if (call.params.contains("id") && !call.params.at("id").is_null()) {
        existing = ownFarm(db, call);
        if (!existing) return {rejected("id", FarmNotFound)};
    } else if (db.scalar("SELECT COUNT(*) FROM farms WHERE user_id = ?", {call.userId}) >= MaxFarms) {
        return {rejected("farms", TooManyFarms)};
    }

    envelope::FieldErrors errors;
    auto farm = readFarm(db, call.params, errors);
    if (!farm) return {rejected(errors)};
    if (!existing) return {std::nullopt, createFarm(db, call.userId, *farm, month)};

    const auto id = existing->at("id").get<std::int64_t>();
    SqlValue period = existing->at("period_id").is_null()
                          ? SqlValue(nullptr)
                          : SqlValue(existing->at("period_id").get<std::int64_t>());
    // Another crop has other periods: the farm starts in the new crop's season.
    if (existing->at("produce_id") != farm->produceId) {
        auto seasonal = seasonalPeriod(db, farm->produceId, month);
        period = seasonal ? SqlValue(*seasonal) : SqlValue(nullptr);
    }
    db.execute("UPDATE farms SET produce_id = ?, size_dekar = ?, period_id = ? WHERE id = ?",
               {farm->produceId, farm->size, period, id});
    storeProducts(db, id, farm->products);
    return {std::nullopt, id};
}

} // namespace

void registerFarmCommands(Dispatch& dispatch, Database& db, Clock clock) {
    if (!clock) clock = systemSeconds;

    dispatch.add("farmer/produces", true, [&db](const ApiCall& call) {
        return envelope::success(Json{{"farmerProduces", farmRecords(db, call.userId, call.baseUrl)}});
    });

    dispatch.add("produce/set", true, [&db, clock](const ApiCall& call) {
        auto guard = db.lock();
        Saved saved;
        db.transaction([&] { saved = saveFarm(db, call, monthInTurkey(clock())); });
        if (saved.refusal) return *saved.refusal;
        return envelope::success(
            Json{{"farmerProduce", records(db, call.userId, saved.farmId, call.baseUrl).at(0)}});
    });

    dispatch.add("produce/delete", true, [&db](const ApiCall& call) {
        auto guard = db.lock();
        auto farm = ownFarm(db, call);
        if (!farm) return rejected("id", FarmNotFound);
        db.execute("DELETE FROM farms WHERE id = ?", {farm->at("id").get<std::int64_t>()});
        return envelope::success(nullptr);
    });

    dispatch.add("produce/periods", true, [&db](const ApiCall& call) {
        auto guard = db.lock();
        auto farm = ownFarm(db, call);
        if (!farm) return rejected("id", FarmNotFound);
        const Json& period = farm->at("period_id");
        return envelope::success(Json{
            {"periodId", period.is_null() ? Json(0) : period},
            {"periods", cropPeriods(db, farm->at("produce_id").get<std::int64_t>(), call.baseUrl)},
            {"pests",
             period.is_null() ? Json::array() : pestGroups(db, period.get<std::int64_t>(), call.baseUrl)},
        });
    });

    dispatch.add("produce/set-period", true, [&db](const ApiCall& call) {
        auto guard = db.lock();
        auto farm = ownFarm(db, call);
        if (!farm) return rejected("id", FarmNotFound);
        auto periodId = integerValue(member(call.params, "periodId"));
        auto period = periodId ? db.queryRow("SELECT id, name FROM periods WHERE id = ? AND produce_id = ?",
                                             {*periodId, farm->at("produce_id").get<std::int64_t>()})
                               : std::nullopt;
        if (!period) return rejected("periodId", UnknownPeriod);
        db.execute("UPDATE farms SET period_id = ? WHERE id = ?",
                   {*periodId, farm->at("id").get<std::int64_t>()});
        return envelope::success(Json{{"periodId", period->at("id")}, {"period", period->at("name")}});
    });
}

} // namespace ekinora::server::farms
