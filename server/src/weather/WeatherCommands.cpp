#include "weather/WeatherCommands.h"

#include "core/Envelope.h"
#include "core/Params.h"

#include <cmath>
#include <variant>

namespace ekinora::server::weather {

namespace {

const std::string LatitudeInvalid = "Lütfen geçerli bir enlem giriniz.";
const std::string LongitudeInvalid = "Lütfen geçerli bir boylam giriniz.";
const std::string DateInvalid = "Lütfen geçerli bir tarih giriniz.";
const std::string OutsideCoverage = "Bu konum için hava durumu bilgisi bulunmamaktadır.";
const std::string TypeUnsupported = "Yalnızca json biçimi desteklenmektedir.";
const std::string LegacyCommand = "getWeatherInformationForDay";

// Farther than this from every county centre, a point is outside the country.
constexpr double CoverageKm = 75.0;

struct Question {
    Place place;
    std::int64_t day = 0;
};

Json hourJson(const HourWeather& hour) {
    return Json{{"time", hour.time},
                {"temperature", hour.temperature},
                {"precipitation", hour.precipitation},
                {"windspeed", hour.windspeed},
                {"winddirection", hour.winddirection},
                {"relativehumidity", hour.relativehumidity},
                {"pictocode", hour.pictocode}};
}

Json hoursJson(const DayWeather& day) {
    Json hours = Json::array();
    for (const auto& hour : day.hours)
        hours.push_back(hourJson(hour));
    return hours;
}

Json dayJson(const DayWeather& day, const std::string& baseUrl) {
    return Json{{"date", displayDate(day.day)},
                {"dateYmd", ymd(day.day)},
                {"maxTemp", day.maxTemp},
                {"minTemp", day.minTemp},
                {"rainRisk", day.rainRisk},
                {"precipitation", day.precipitation},
                {"pictocode", day.pictocode},
                {"image", baseUrl + IconFolder + std::to_string(day.pictocode) + "_day.svg"}};
}

} // namespace

WeatherService::WeatherService(Database& db, Clock clock)
    : m_clock(clock ? std::move(clock) : Clock(systemSeconds)) {
    for (const auto& row : db.query("SELECT city_id, latitude, longitude FROM counties ORDER BY id"))
        m_counties.push_back({row.at("latitude").get<double>(), row.at("longitude").get<double>(),
                              row.at("city_id").get<std::int64_t>()});
}

std::optional<Place> WeatherService::placeAt(double latitude, double longitude) const {
    constexpr double Radians = 3.14159265358979323846 / 180;
    const County* nearest = nullptr;
    double best = 0;
    for (const auto& county : m_counties) {
        const double x =
            (county.longitude - longitude) * std::cos((county.latitude + latitude) / 2 * Radians);
        const double y = county.latitude - latitude;
        const double distance = x * x + y * y;
        if (!nearest || distance < best) {
            nearest = &county;
            best = distance;
        }
    }
    if (!nearest || std::sqrt(best) * 111.2 > CoverageKm) return std::nullopt;
    const Climate* climate = provinceClimate(nearest->city);
    if (!climate) return std::nullopt;
    return Place{latitude, longitude, nearest->city, *climate};
}

namespace {

// The point and the day of a call, or the rejection that names every bad parameter.
std::variant<Question, Json> question(const WeatherService& service, const ApiCall& call,
                                      std::int64_t today) {
    Params p(call);
    auto coordinate = [&p](const char* name, double limit, const std::string& invalid) {
        auto value = p.number(name);
        if (value && std::abs(*value) > limit) value.reset();
        if (!value) p.fail(name, invalid);
        return value;
    };
    const auto latitude = coordinate("latitude", 90, LatitudeInvalid);
    const auto longitude = coordinate("longitude", 180, LongitudeInvalid);
    std::optional<Place> place;
    if (latitude && longitude) {
        place = service.placeAt(*latitude, *longitude);
        if (!place) p.fail("location", OutsideCoverage);
    }
    std::int64_t day = today;
    if (const auto text = p.text("date")) {
        const auto date = parseDate(*text);
        if (date)
            day = dayNumber(*date);
        else
            p.fail("date", DateInvalid);
    }
    if (!p.ok()) return p.rejection();
    return Question{*place, day};
}

} // namespace

Json WeatherService::hourly(const ApiCall& call) const {
    auto asked = question(*this, call, dayNumberAt(m_clock()));
    if (auto* rejection = std::get_if<Json>(&asked)) return std::move(*rejection);
    const auto& q = std::get<Question>(asked);
    return envelope::success(hoursJson(forecast(q.place, q.day)));
}

Json WeatherService::weekly(const ApiCall& call) const {
    auto asked = question(*this, call, dayNumberAt(m_clock()));
    if (auto* rejection = std::get_if<Json>(&asked)) return std::move(*rejection);
    const auto& q = std::get<Question>(asked);
    Json days = Json::array();
    for (int i = 0; i < 7; ++i)
        days.push_back(dayJson(forecast(q.place, q.day + i), call.baseUrl));
    return envelope::success(std::move(days));
}

Json WeatherService::legacyDay(const ApiCall& call) const {
    if (call.command != LegacyCommand) return envelope::failure(envelope::NotFound, envelope::UnknownCommand);
    const auto type = Params(call).text("type");
    if (type && *type != "json") return envelope::rejection({{"type", TypeUnsupported}});
    auto asked = question(*this, call, dayNumberAt(m_clock()));
    if (auto* rejection = std::get_if<Json>(&asked)) return std::move(*rejection);
    const auto& q = std::get<Question>(asked);
    const DayWeather day = forecast(q.place, q.day);
    Json data = dayJson(day, call.baseUrl);
    data["hours"] = hoursJson(day);
    return envelope::success(std::move(data));
}

void registerCommands(Dispatch& dispatch, const WeatherService& service) {
    dispatch.add("weather/weather-json", Access::Public,
                 [&service](const ApiCall& call) { return service.hourly(call); });
    dispatch.add("weather/weather-weekly", Access::Public,
                 [&service](const ApiCall& call) { return service.weekly(call); });
}

} // namespace ekinora::server::weather
