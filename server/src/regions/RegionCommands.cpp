#include "regions/RegionCommands.h"

#include "core/Envelope.h"
#include "core/Params.h"

namespace ekinora::server::regions {

namespace {

const std::string CityMissing = "Lütfen il seçiniz.";

// Neither list changes while the service runs, so the cities' reply is made once.
struct Context {
    Database& db;
    Json cities;
};

Json cities(const Context& c, const ApiCall&) {
    return c.cities;
}

Json counties(const Context& c, const ApiCall& call) {
    const auto cityId = Params(call).integer("cityId");
    if (!cityId || c.db.scalar("SELECT COUNT(*) FROM cities WHERE id = ?", {*cityId}) == 0)
        return envelope::rejection({{"cityId", CityMissing}});
    return envelope::success(Json{
        {"counties", c.db.query("SELECT id, name FROM counties WHERE city_id = ? ORDER BY id", {*cityId})}});
}

} // namespace

void registerCommands(Dispatch& dispatch, Database& db) {
    const Context c{db,
                    envelope::success(Json{{"cities", db.query("SELECT id, name FROM cities ORDER BY id")}})};
    dispatch.add("region/cities", Access::Public, cities, c);
    dispatch.add("region/counties", Access::Public, counties, c);
}

} // namespace ekinora::server::regions
