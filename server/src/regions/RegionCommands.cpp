#include "regions/RegionCommands.h"

#include "core/Envelope.h"

#include <charconv>

namespace ekinora::server::regions {

namespace {

const std::string CityMissing = "Lütfen il seçiniz.";

std::optional<std::int64_t> integer(const std::optional<std::string>& text) {
    if (!text || text->empty()) return std::nullopt;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), value);
    if (error != std::errc() || end != text->data() + text->size()) return std::nullopt;
    return value;
}

} // namespace

void registerCommands(Dispatch& dispatch, Database& db) {
    // Neither list changes while the service runs, so each reply is made once.
    const Json cities =
        envelope::success(Json{{"cities", db.query("SELECT id, name FROM cities ORDER BY id")}});
    dispatch.add("region/cities", false, [cities](const ApiCall&) { return cities; });

    dispatch.add("region/counties", false, [&db](const ApiCall& call) {
        const auto cityId = integer(call.text("cityId"));
        if (!cityId || db.scalar("SELECT COUNT(*) FROM cities WHERE id = ?", {*cityId}) == 0)
            return envelope::rejection(CityMissing, {{"cityId", CityMissing}});
        return envelope::success(
            Json{{"counties",
                  db.query("SELECT id, name FROM counties WHERE city_id = ? ORDER BY id", {*cityId})}});
    });
}

} // namespace ekinora::server::regions
