#include "farms/Farms.h"

#include "core/Params.h"
#include "farms/Calendar.h"

#include <cmath>
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

// A whole number of dekar reads as one ("120", not "120.0") in the app's plain text.
Json sizeValue(double size) {
    if (size == std::floor(size) && std::fabs(size) < 1e15) return std::int64_t(size);
    return size;
}

// The farm the parameter "id" names, if it is the caller's.
std::optional<Json> ownFarm(Database& db, const ApiCall& call) {
    auto id = Params(call).integer("id");
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

// "produceId", "range" and "aps" in any of the forms the app uses; what is wrong goes into p in that
// order. The limit on the number of farms is the caller's.
std::optional<FarmInput> readFarm(Database& db, Params& p) {
    FarmInput farm;
    const auto crop = p.requiredInteger("produceId", NoCrop, UnknownCrop);
    if (crop && !db.scalar("SELECT COUNT(*) FROM produces WHERE id = ?", {*crop}))
        p.fail("produceId", UnknownCrop);
    else if (crop)
        farm.produceId = *crop;

    // The app turns an empty or unreadable size field into 0.
    const auto size = p.number("range", NumberText::PointOrComma);
    if (!size || *size == 0)
        p.fail("range", NoSize);
    else if (*size < 0)
        p.fail("range", NegativeSize);
    else if (*size > MaxSizeDekar)
        p.fail("range", SizeTooLarge);
    else
        farm.size = *size;

    // "aps" left out means no products: the app sends none when the farmer has deselected them all.
    auto products = p.ids("aps");
    bool known = products.has_value();
    for (size_t i = 0; known && i < products->size(); ++i)
        known = db.scalar("SELECT COUNT(*) FROM aps WHERE id = ?", {(*products)[i]}) > 0;
    if (!known)
        p.fail("aps", UnknownProduct);
    else if (int(products->size()) > MaxProducts)
        p.fail("aps", TooManyProducts);
    else
        farm.products = std::move(*products);

    if (!p.ok()) return std::nullopt;
    return farm;
}

} // namespace

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

const envelope::FieldErrors NotFound = {{"id", FarmNotFound}};

struct Saved {
    std::optional<Json> refusal;
    std::int64_t farmId = 0;
};

// Creates a farm, or with "id" updates one of the caller's. Runs in a transaction, so that two
// requests together cannot pass the limit.
Saved saveFarm(Database& db, const ApiCall& call, int month) {
    Params p(call);
    std::optional<Json> existing;
    if (p.has("id")) {
        existing = ownFarm(db, call);
        if (!existing) return {envelope::rejection(NotFound)};
    } else if (db.scalar("SELECT COUNT(*) FROM farms WHERE user_id = ?", {call.userId}) >= MaxFarms) {
        return {envelope::rejection({{"farms", TooManyFarms}})};
    }

    auto farm = readFarm(db, p);
    if (!farm) return {p.rejection()};
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

struct Context {
    Database& db;
    Clock now;
};

Json listFarms(Database& db, const ApiCall& call) {
    return envelope::success(Json{{"farmerProduces", farmRecords(db, call.userId, call.baseUrl)}});
}

Json setFarm(const Context& c, const ApiCall& call) {
    auto guard = c.db.lock();
    Saved saved;
    c.db.transaction([&] { saved = saveFarm(c.db, call, monthInTurkey(c.now())); });
    if (saved.refusal) return *saved.refusal;
    return envelope::success(
        Json{{"farmerProduce", records(c.db, call.userId, saved.farmId, call.baseUrl).at(0)}});
}

Json deleteFarm(Database& db, const ApiCall& call) {
    auto guard = db.lock();
    auto farm = ownFarm(db, call);
    if (!farm) return envelope::rejection(NotFound);
    db.execute("DELETE FROM farms WHERE id = ?", {farm->at("id").get<std::int64_t>()});
    return envelope::success(nullptr);
}

Json farmPeriods(Database& db, const ApiCall& call) {
    auto guard = db.lock();
    auto farm = ownFarm(db, call);
    if (!farm) return envelope::rejection(NotFound);
    const Json& period = farm->at("period_id");
    return envelope::success(Json{
        {"periodId", period.is_null() ? Json(0) : period},
        {"periods", cropPeriods(db, farm->at("produce_id").get<std::int64_t>(), call.baseUrl)},
        {"pests",
         period.is_null() ? Json::array() : pestGroups(db, period.get<std::int64_t>(), call.baseUrl)},
    });
}

Json setPeriod(Database& db, const ApiCall& call) {
    auto guard = db.lock();
    auto farm = ownFarm(db, call);
    if (!farm) return envelope::rejection(NotFound);
    auto periodId = Params(call).integer("periodId");
    auto period = periodId ? db.queryRow("SELECT id, name FROM periods WHERE id = ? AND produce_id = ?",
                                         {*periodId, farm->at("produce_id").get<std::int64_t>()})
                           : std::nullopt;
    if (!period) return envelope::rejection({{"periodId", UnknownPeriod}});
    db.execute("UPDATE farms SET period_id = ? WHERE id = ?",
               {*periodId, farm->at("id").get<std::int64_t>()});
    return envelope::success(Json{{"periodId", period->at("id")}, {"period", period->at("name")}});
}

} // namespace

// Farms are kept by the farmer side only; each account reaches its own farms and no other's.
void registerFarmCommands(Dispatch& dispatch, Database& db, Clock clock) {
    const Context c{db, clock ? clock : Clock(systemSeconds)};
    dispatch.add("farmer/produces", Access::FarmerSide, listFarms, db);
    dispatch.add("produce/set", Access::FarmerSide, setFarm, c);
    dispatch.add("produce/delete", Access::FarmerSide, deleteFarm, db);
    dispatch.add("produce/periods", Access::FarmerSide, farmPeriods, db);
    dispatch.add("produce/set-period", Access::FarmerSide, setPeriod, db);
}

} // namespace ekinora::server::farms
