#include "regions/Regions.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace ekinora::server::regions {

void seed(Database& db, const std::string& dataDir) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM cities") > 0) return;

    const std::string file = dataDir + "/turkey-regions.json";
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("region data not found: " + file);
    std::stringstream text;
    text << in.rdbuf();
    const Json provinces = Json::parse(text.str());

    db.transaction([&] {
        std::int64_t countyId = 0;
        for (const auto& city : provinces) {
            const auto cityId = city.at("id").get<std::int64_t>();
            db.execute("INSERT INTO cities (id, name, latitude, longitude) VALUES (?, ?, ?, ?)",
                       {cityId, city.at("name").get<std::string>(), city.at("latitude").get<double>(),
                        city.at("longitude").get<double>()});
            for (const auto& county : city.at("counties")) {
                db.execute(
                    "INSERT INTO counties (id, city_id, name, latitude, longitude) VALUES (?, ?, ?, ?, ?)",
                    {++countyId, cityId, county.at("name").get<std::string>(),
                     county.at("latitude").get<double>(), county.at("longitude").get<double>()});
            }
        }
    });
}

} // namespace ekinora::server::regions
