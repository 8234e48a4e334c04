#pragma once

#include "core/ApiCall.h"
#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"
#include "weather/Forecast.h"

#include <optional>
#include <vector>

namespace ekinora::server::weather {

// Where the pictograms are served: "<code>_day.svg" below it.
inline const std::string IconFolder = "/static/media/images/weather/";
// The older weather endpoint, below its own root "/legacy-weather".
inline const std::string LegacyPath = "/legacy-weather/scripts/include/custom/weather.php";

// Weather for the points of the country's counties: each point takes the normals of the province
// of its nearest county. Weather is public: no command needs a token.
class WeatherService {
public:
    WeatherService(Database& db, Clock clock);

    // `weather/weather-json`: the 24 hours of "date" (default today) at "latitude", "longitude".
    Json hourly(const ApiCall& call) const;
    // `weather/weather-weekly`: seven days from "date" (default today).
    Json weekly(const ApiCall& call) const;
    // The older endpoint: "do" getWeatherInformationForDay, "type" json: one day with its hours.
    Json legacyDay(const ApiCall& call) const;

    // The place of a point; nullopt when no county centre lies near it.
    std::optional<Place> placeAt(double latitude, double longitude) const;

private:
    struct County {
        double latitude;
        double longitude;
        std::int64_t city;
    };
    std::vector<County> m_counties;
    Clock m_clock;
};

void registerCommands(Dispatch& dispatch, const WeatherService& service);

} // namespace ekinora::server::weather
