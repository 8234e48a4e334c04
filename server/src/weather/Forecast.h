#pragma once

#include "weather/Climate.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ekinora::server::weather {

// Days are counted from 1970-01-01 in the country's own time (UTC+3 all year).
struct CivilDate {
    int year = 1970;
    int month = 1;
    int day = 1;
};

// "yyyy-MM-dd" with a real day of the calendar between 1900 and 2199; nothing else.
std::optional<CivilDate> parseDate(std::string_view text);
std::int64_t dayNumber(const CivilDate& date);
CivilDate civilDate(std::int64_t dayNumber);
std::int64_t dayNumberAt(std::int64_t epochSeconds); // the local day of an instant
std::string ymd(std::int64_t dayNumber);             // "2024-03-12"
std::string displayDate(std::int64_t dayNumber);     // "12 Mart Salı"

// A point with the normals of the province it lies in. The province's number drives the
// large-scale weather (rainy spells, warm and cold days) shared by its counties; the point itself
// adds the local detail, so two counties of one province differ by the hour, not by the season.
struct Place {
    double latitude = 0;
    double longitude = 0;
    std::int64_t province = 0;
    Climate climate{};
};

struct HourWeather {
    int time = 0;               // 0 to 23
    double temperature = 0;     // °C, one decimal
    double precipitation = 0;   // mm in the hour, one decimal
    double windspeed = 0;       // km/h, one decimal
    int winddirection = 0;      // degrees the wind comes from, 0 to 359
    int relativehumidity = 0;   // per cent
    int pictocode = 1;          // 1 to 35
};

struct DayWeather {
    std::int64_t day = 0;
    std::array<HourWeather, 24> hours{};
    double maxTemp = 0;       // of the hours
    double minTemp = 0;       // of the hours
    double precipitation = 0; // sum of the hours
    int rainRisk = 0;         // per cent, a multiple of 5
    int pictocode = 1;        // the day's picture
};

// The weather of one day at one place: a pure function of its arguments.
DayWeather forecast(const Place& place, std::int64_t dayNumber);

} // namespace ekinora::server::weather
