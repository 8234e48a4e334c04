#include "weather/Forecast.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace ekinora::server::weather {

// ---- Calendar --------------------------------------------------------------------------------

namespace {

bool isLeap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int daysInMonth(int year, int month) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : days[month - 1];
}

const char* const MonthNames[] = {"Ocak",   "Şubat",   "Mart",  "Nisan", "Mayıs", "Haziran",
                                  "Temmuz", "Ağustos", "Eylül", "Ekim",  "Kasım", "Aralık"};
// Monday first.
const char* const WeekdayNames[] = {"Pazartesi", "Salı", "Çarşamba", "Perşembe", "Cuma", "Cumartesi", "Pazar"};

constexpr std::int64_t LocalOffsetSeconds = 3 * 3600;

} // namespace

std::optional<CivilDate> parseDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    auto number = [&](size_t from, size_t count) {
        int value = 0;
        for (size_t i = from; i < from + count; ++i) {
            if (text[i] < '0' || text[i] > '9') return -1;
            value = value * 10 + (text[i] - '0');
        }
        return value;
    };
    const int year = number(0, 4), month = number(5, 2), day = number(8, 2);
    if (year < 1900 || year > 2199 || month < 1 || month > 12 || day < 1) return std::nullopt;
    if (day > daysInMonth(year, month)) return std::nullopt;
    return CivilDate{year, month, day};
}

// The proleptic Gregorian day count, in whole eras of 400 years.
std::int64_t dayNumber(const CivilDate& date) {
    const std::int64_t y = date.year - (date.month <= 2 ? 1 : 0);
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yearOfEra = y - era * 400;
    const std::int64_t m = date.month;
    const std::int64_t dayOfYear = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + date.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

CivilDate civilDate(std::int64_t n) {
    n += 719468;
    const std::int64_t era = (n >= 0 ? n : n - 146096) / 146097;
    const std::int64_t dayOfEra = n - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t mp = (5 * dayOfYear + 2) / 153;
    const int day = int(dayOfYear - (153 * mp + 2) / 5 + 1);
    const int month = int(mp < 10 ? mp + 3 : mp - 9);
    const int year = int(yearOfEra + era * 400 + (month <= 2 ? 1 : 0));
    return {year, month, day};
}

std::int64_t dayNumberAt(std::int64_t epochSeconds) {
    const std::int64_t local = epochSeconds + LocalOffsetSeconds;
    return local >= 0 ? local / 86400 : (local - 86399) / 86400;
}

std::string ymd(std::int64_t n) {
    const CivilDate d = civilDate(n);
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", d.year, d.month, d.day);
    return text;
}

std::string displayDate(std::int64_t n) {
    const CivilDate d = civilDate(n);
    const int weekday = int(((n % 7) + 7 + 3) % 7); // 1970-01-01 was a Thursday
    return std::to_string(d.day) + " " + MonthNames[d.month - 1] + " " + WeekdayNames[weekday];
}

// ---- Weather ---------------------------------------------------------------------------------

namespace {

constexpr double Pi = 3.14159265358979323846;

std::uint64_t mix(std::uint64_t x) {
    x += 0x9e3779b97f4a7c15ULL;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
    return x ^ (x >> 31);
}

// What each draw is for, so that no two draws share a number.
enum Stream : std::uint64_t {
    WetStart = 1, WetStep, Convective, Thunder, Amount, CloudDraw, Anomaly, LocalOffset, DewDraw,
    WindDraw, WindTurn, RainStart, RainLength, RainShape, HourCloud, HourTemperature, HourWind,
    HourHumidity, RiskDraw,
};

// Uniform in [0, 1) from a seed, a stream and up to two indices.
double draw(std::uint64_t seed, Stream stream, std::int64_t a, std::int64_t b = 0) {
    std::uint64_t h = mix(seed ^ mix(std::uint64_t(stream) * 0x100000001b3ULL));
    h = mix(h ^ std::uint64_t(a));
    h = mix(h ^ (std::uint64_t(b) * 0x9e3779b97f4a7c15ULL));
    return double(h >> 11) * (1.0 / 9007199254740992.0);
}

// Roughly normal, mean 0, deviation 1.
double gaussian(std::uint64_t seed, Stream stream, std::int64_t a) {
    double sum = 0;
    for (int i = 0; i < 4; ++i)
        sum += draw(seed, stream, a, i);
    return (sum - 2.0) * std::sqrt(3.0);
}

double clamp01(double x) {
    return std::clamp(x, 0.0, 1.0);
}

double round1(double x) {
    const double r = std::round(x * 10.0) / 10.0;
    return r == 0 ? 0.0 : r; // never "-0.0"
}

double bell(double hour, double peak, double width) {
    const double d = (hour - peak) / width;
    return std::exp(-d * d);
}

int dayOfYear(std::int64_t n) {
    const CivilDate d = civilDate(n);
    return int(n - dayNumber(CivilDate{d.year, 1, 1})) + 1;
}

// 0 in the coldest days (late January), 1 in the warmest (late July).
double summerness(int doy) {
    return 0.5 - 0.5 * std::cos(2 * Pi * (doy - 20) / 365.25);
}

struct RegimeTraits {
    double intensityFactor; // how heavy a rainy day is, against the year's total
    double convection;      // how many warm-season rainy days are showers and storms
    double clearRangeWinter, clearRangeSummer; // daily range of a clear day, °C
    double dryDepressionWinter, dryDepressionSummer; // dawn temperature less dew point
    double wind;                                     // mean wind, km/h
    double windDry, windWet;                         // prevailing directions
};

RegimeTraits traits(Regime regime, double summer) {
    switch (regime) {
    case Regime::Mediterranean: return {2.0, 0.6, 11, 13, 1.8, 4.0, 11, summer > 0.5 ? 200.0 : 345.0, 205};
    case Regime::Marmara: return {1.1, 0.6, 8, 10, 1.2, 3.5, 16, 35, 215};
    case Regime::BlackSea: return {1.0, 0.5, 7, 8, 1.0, 2.5, 10, 300, 320};
    case Regime::Continental: return {1.0, 1.0, 12, 17, 1.2, 9.0, 11, summer > 0.5 ? 30.0 : 240.0, 230};
    case Regime::Eastern: return {1.0, 1.0, 12, 17, 1.5, 8.0, 9, 250, 230};
    case Regime::Southeastern: return {1.4, 0.7, 12, 16, 3.5, 13.0, 10, 300, 200};
    }
    return {1.0, 1.0, 10, 14, 2.0, 6.0, 10, 0, 220};
}

// The precipitation of an average day of the season, mm, with the months blended into each other.
double seasonalDailyRain(const Climate& climate, int doy) {
    const auto& shares = monthlyShares(climate.regime);
    const double position = (doy - 15.2) / 30.44;
    const double lower = std::floor(position);
    const double fraction = position - lower;
    const int first = ((int(lower) % 12) + 12) % 12;
    const double share = shares[first] * (1 - fraction) + shares[(first + 1) % 12] * fraction;
    return share * climate.annualPrecipitation / 30.44;
}

struct Sun {
    double sunrise; // local clock hours
    double noon;
};

Sun sun(const Place& place, int doy) {
    const double declination = 23.44 * std::sin(2 * Pi * (284 + doy) / 365.0) * Pi / 180;
    const double latitude = place.latitude * Pi / 180;
    const double cosine = std::clamp(-std::tan(latitude) * std::tan(declination), -1.0, 1.0);
    const double dayLength = 2 * std::acos(cosine) * 180 / Pi / 15;
    const double noon = 12.0 + (45.0 - place.longitude) / 15.0; // the clock runs on 45° east
    return {noon - dayLength / 2, noon};
}

// The large-scale state of one day.
struct DayState {
    bool wet = false;
    bool convective = false;
    bool thunder = false;
    double rain = 0;  // mm the day is meant to get
    double cloud = 0; // base cover, 0 to 1
    double tmax = 0, tmin = 0;
    double dewpoint = 0;
    double wind = 0; // km/h
    double windDirection = 0;
    double wetChance = 0;
    Sun sun{};
};

struct Seeds {
    std::uint64_t region; // the province: spells of weather
    std::uint64_t point;  // the place itself: local detail
};

Seeds seeds(const Place& place) {
    const auto lat = std::int64_t(std::llround(place.latitude * 100));
    const auto lon = std::int64_t(std::llround(place.longitude * 100));
    return {mix(0x45b1a7e3ULL ^ mix(std::uint64_t(place.province))),
            mix(mix(std::uint64_t(lat)) ^ (std::uint64_t(lon) * 0xff51afd7ed558ccdULL))};
}

double wetChance(const Climate& climate, int doy) {
    const RegimeTraits t = traits(climate.regime, 0);
    const double intensity = (3.0 + climate.annualPrecipitation / 200.0) * t.intensityFactor;
    return std::clamp(seasonalDailyRain(climate, doy) / intensity, 0.02, 0.75);
}

// Rainy and dry days come in spells: a two-state chain whose long-run share of rainy days is the
// season's chance, walked from a week before so that every day is computed the same way.
std::vector<bool> wetDays(const Place& place, const Seeds& s, std::int64_t first, std::int64_t last) {
    constexpr int Warmup = 7;
    std::vector<bool> out;
    bool wet = draw(s.region, WetStart, first - Warmup) < wetChance(place.climate, dayOfYear(first - Warmup));
    for (std::int64_t n = first - Warmup + 1; n <= last; ++n) {
        const double p = wetChance(place.climate, dayOfYear(n));
        const double stay = p + 0.35 * (1 - p);
        const double start = p * (1 - stay) / (1 - p);
        wet = draw(s.region, WetStep, n) < (wet ? stay : start);
        if (n >= first) out.push_back(wet);
    }
    return out;
}

DayState dayState(const Place& place, const Seeds& s, std::int64_t n, bool wet, bool wetBefore, bool wetAfter) {
    const Climate& c = place.climate;
    const int doy = dayOfYear(n);
    const double summer = summerness(doy);
    const RegimeTraits t = traits(c.regime, summer);
    const double intensity = (3.0 + c.annualPrecipitation / 200.0) * t.intensityFactor;
    const double seasonal = c.januaryMean + (c.julyMean - c.januaryMean) * summer;

    DayState d;
    d.sun = sun(place, doy);
    d.wet = wet;
    d.wetChance = wetChance(c, doy);
    if (wet) {
        const double convectionChance = std::clamp((seasonal - 10.0) / 12.0, 0.0, 0.85) * t.convection;
        d.convective = draw(s.region, Convective, n) < convectionChance;
        d.thunder = d.convective && draw(s.region, Thunder, n) < 0.65;
        const double amount = -std::log(1 - draw(s.region, Amount, n)) * intensity * (d.convective ? 0.8 : 1.0);
        d.rain = std::clamp(amount, 0.3, 6 * intensity);
        d.cloud = d.convective ? 0.45 + 0.25 * draw(s.region, CloudDraw, n) : 0.8 + 0.2 * draw(s.region, CloudDraw, n);
    } else {
        double cloud = 0.08 + 0.85 * d.wetChance + 0.5 * (draw(s.region, CloudDraw, n) - 0.5);
        if (wetBefore || wetAfter) cloud += 0.15;
        d.cloud = std::clamp(cloud, 0.0, 0.95);
    }

    // Warm and cold spells: a moving blend of the last days' draws; larger in winter.
    const double weights[] = {0.35, 0.25, 0.18, 0.12, 0.10};
    double anomaly = 0;
    for (int k = 0; k < 5; ++k)
        anomaly += weights[k] * gaussian(s.region, Anomaly, n - k);
    anomaly *= (3.2 - 1.2 * summer) / 0.49;
    if (c.coastal) anomaly *= anomaly < 0 ? 0.5 : 0.7; // the sea holds the air's warmth
    const double local = (draw(s.point, LocalOffset, 0) - 0.5) * 1.6;

    double mean = seasonal + anomaly + local;
    if (wet) mean -= 1.0 + 1.5 * summer;
    double range = t.clearRangeWinter + (t.clearRangeSummer - t.clearRangeWinter) * summer;
    if (c.coastal) range *= 0.85;
    range *= 1 - 0.4 * d.cloud;
    if (wet) range *= 0.85;
    d.tmax = mean + range / 2;
    d.tmin = mean - range / 2;

    double depression = t.dryDepressionWinter + (t.dryDepressionSummer - t.dryDepressionWinter) * summer;
    depression += (draw(s.region, DewDraw, n) - 0.5) * 4.0;
    if (wet) depression = 0.3 + 0.7 * draw(s.region, DewDraw, n, 1);
    d.dewpoint = d.tmin - std::max(depression, 0.2);

    d.wind = t.wind * (0.55 + 0.9 * draw(s.region, WindDraw, n)) * (wet ? 1.35 : 1.0) * (c.coastal ? 1.15 : 1.0);
    d.windDirection = (wet ? t.windWet : t.windDry) + (draw(s.region, WindTurn, n) - 0.5) * 100;
    return d;
}

// Temperature through the day: lowest just after sunrise, highest in the afternoon, an evening
// fall that is quick at first and slow towards the night.
double curve(double hour, const DayState& yesterday, const DayState& today, const DayState& tomorrow) {
    const double minAt = today.sun.sunrise + 0.5;
    const double maxAt = today.sun.noon + 2.5;
    auto fall = [](double x) { return 0.5 + 0.5 * std::cos(Pi * std::pow(std::clamp(x, 0.0, 1.0), 0.7)); };
    if (hour < minAt) {
        const double from = yesterday.sun.noon + 2.5 - 24;
        return today.tmin + (yesterday.tmax - today.tmin) * fall((hour - from) / (minAt - from));
    }
    if (hour <= maxAt)
        return today.tmin + (today.tmax - today.tmin) * (0.5 - 0.5 * std::cos(Pi * (hour - minAt) / (maxAt - minAt)));
    const double to = tomorrow.sun.sunrise + 0.5 + 24;
    return tomorrow.tmin + (today.tmax - tomorrow.tmin) * fall((hour - maxAt) / (to - maxAt));
}

double relativeHumidity(double temperature, double dewpoint) {
    auto vapour = [](double t) { return std::exp(17.625 * t / (243.04 + t)); };
    return std::clamp(100.0 * vapour(dewpoint) / vapour(temperature), 8.0, 100.0);
}

// Cover to picture for a dry hour: the codes from clear to overcast, graded.
int cloudCode(double cover) {
    if (cover < 0.10) return 1;
    if (cover < 0.30) return 2 + std::min(4, int((cover - 0.10) / 0.04));  // "Az Bulutlu", 2 to 6
    if (cover < 0.45) return cover < 0.375 ? 7 : 8;                        // "Parçalı Bulutlu"
    if (cover < 0.80) {                                                    // "Parçalı Çok Bulutlu"
        static const int graded[] = {9, 10, 11, 12, 19, 20};
        return graded[std::min(5, int((cover - 0.45) / (0.35 / 6)))];
    }
    if (cover < 0.92) return 21; // "Çok Bulutlu"
    return 22;                   // "Kapalı"
}

int fogCode(double cover, double humidity) {
    if (cover < 0.30) return humidity >= 99 ? 15 : 14; // "Açık ve Sisli"
    if (cover < 0.60) return 16;                       // "Sisli"
    return cover < 0.85 ? 17 : 18;
}

enum class Phase { Rain, Sleet, Snow };

Phase phaseAt(double temperature) {
    if (temperature <= 1.0) return Phase::Snow;
    if (temperature <= 3.0) return Phase::Sleet;
    return Phase::Rain;
}

int precipitationCode(double mm, double temperature, bool showery, bool thunder) {
    const Phase phase = phaseAt(temperature);
    if (phase == Phase::Sleet) return 35; // "Karla Karışık Yağmurlu"
    if (phase == Phase::Snow) {
        if (mm < 0.3) return showery ? 32 : 34;
        if (mm < 1.2) return 24;
        return mm < 2.5 ? 26 : 29;
    }
    if (thunder && mm >= 0.5) {
        if (mm >= 5.0) return 30;
        return mm >= 1.5 ? 27 : 28;
    }
    if (mm < 0.5) return showery ? 31 : 33;
    return mm < 3.0 ? 23 : 25;
}

} // namespace

DayWeather forecast(const Place& place, std::int64_t n) {
    const Seeds s = seeds(place);
    const std::vector<bool> wet = wetDays(place, s, n - 2, n + 2); // n-2 .. n+2
    auto state = [&](int i) { // i: -1, 0, 1
        return dayState(place, s, n + i, wet[size_t(i + 2)], wet[size_t(i + 1)], wet[size_t(i + 3)]);
    };
    const DayState yesterday = state(-1), today = state(0), tomorrow = state(1);

    DayWeather out;
    out.day = n;

    // When the rain falls: a storm in the afternoon, a front at any hour for longer.
    std::array<double, 24> rain{};
    if (today.wet) {
        int start, length;
        if (today.convective) {
            start = 12 + int(draw(s.point, RainStart, n) * 5);
            length = 1 + int(draw(s.point, RainLength, n) * 4);
        } else {
            length = 4 + int(draw(s.point, RainLength, n) * 11);
            start = int(draw(s.point, RainStart, n) * (24 - length + 1));
        }
        double total = 0;
        for (int i = 0; i < length; ++i) {
            const double position = (i + 0.5) / length;
            rain[size_t(start + i)] =
                (1.0 - std::abs(position - 0.5) * 1.2) * (0.6 + 0.8 * draw(s.point, RainShape, n, i));
            total += rain[size_t(start + i)];
        }
        for (double& mm : rain)
            mm = round1(mm * today.rain / total);
    }

    const double summer = summerness(dayOfYear(n));
    const bool fairCumulus = !today.wet && summer > 0.5 &&
                             (place.climate.regime == Regime::Continental || place.climate.regime == Regime::Eastern);
    double sum = 0;
    std::array<double, 24> covers{};
    for (int h = 0; h < 24; ++h) {
        HourWeather& hour = out.hours[size_t(h)];
        hour.time = h;
        const double mm = rain[size_t(h)];
        bool nearRain = false;
        for (int k = std::max(0, h - 2); k <= std::min(23, h + 2); ++k)
            nearRain = nearRain || rain[size_t(k)] > 0;

        // Cover: the day's base, storms building in the afternoon, a slow local wander.
        double cover = today.cloud;
        if (today.convective) cover += 0.35 * bell(h, 15, 3) - 0.1;
        if (fairCumulus) cover += 0.15 * summer * bell(h, 14, 3);
        const double lattice = h / 6.0;
        const int cell = int(lattice);
        const double f = lattice - cell;
        cover += 0.24 * ((draw(s.point, HourCloud, n, cell) - 0.5) * (1 - f) +
                         (draw(s.point, HourCloud, n, cell + 1) - 0.5) * f);
        if (mm > 0) cover = std::max(cover, today.convective ? 0.75 : 0.9);
        else if (nearRain) cover = std::max(cover, 0.7);
        cover = clamp01(cover);
        covers[size_t(h)] = cover;

        double temperature = curve(h, yesterday, today, tomorrow);
        if (mm > 0) temperature -= today.convective ? 1.5 : 0.5;
        else if (h > 0 && rain[size_t(h - 1)] > 0 && today.convective) temperature -= 0.8;
        temperature += (draw(s.point, HourTemperature, n, h) - 0.5) * 0.5;
        hour.temperature = round1(temperature);

        double wind = today.wind * (0.6 + 0.75 * bell(h, 14.5, 4.5)) * (0.85 + 0.3 * draw(s.point, HourWind, n, h));
        if (today.thunder && mm > 0) wind *= 1.6;
        hour.windspeed = round1(wind);
        const double direction = today.windDirection + 25 * std::sin(2 * Pi * (h + 3) / 24) +
                                 (draw(s.point, HourWind, n, h + 100) - 0.5) * 20;
        hour.winddirection = ((int(std::lround(direction)) % 360) + 360) % 360;

        double humidity = relativeHumidity(hour.temperature, today.dewpoint);
        if (mm > 0) humidity = std::max(humidity, 88 + 10 * draw(s.point, HourHumidity, n, h));
        hour.relativehumidity = int(std::lround(humidity));

        hour.precipitation = mm;
        sum += mm;
        const double sinceSunrise = h - today.sun.sunrise;
        if (mm > 0) {
            const bool thunder = today.thunder && mm >= 0.5;
            hour.pictocode = precipitationCode(mm, hour.temperature, today.convective, thunder);
        } else if (hour.windspeed < 8 && humidity >= 97 && sinceSunrise > -4 && sinceSunrise < 3) {
            hour.pictocode = fogCode(cover, humidity);
        } else if (hour.windspeed < 10 && humidity >= 90 && cover < 0.3 && sinceSunrise > -2 && sinceSunrise < 3) {
            hour.pictocode = 13; // "Açık Hafif Sisli"
        } else {
            hour.pictocode = cloudCode(cover);
        }
    }

    out.maxTemp = out.minTemp = out.hours[0].temperature;
    for (const auto& hour : out.hours) {
        out.maxTemp = std::max(out.maxTemp, hour.temperature);
        out.minTemp = std::min(out.minTemp, hour.temperature);
    }
    out.precipitation = round1(sum);

    // The day's picture: its wettest hour, or else the daylight cover (fog if it held the morning).
    if (out.precipitation > 0) {
        const HourWeather* wettest = &out.hours[0];
        for (const auto& hour : out.hours)
            if (hour.precipitation > wettest->precipitation) wettest = &hour;
        out.pictocode = wettest->pictocode;
    } else {
        int foggy = 0;
        double cover = 0;
        int counted = 0;
        for (int h = 8; h <= 17; ++h) {
            const int code = out.hours[size_t(h)].pictocode;
            if (code >= 14 && code <= 18) ++foggy;
            cover += covers[size_t(h)];
            ++counted;
        }
        out.pictocode = foggy >= 3 ? out.hours[8].pictocode : cloudCode(cover / counted);
    }

    // The chance of rain as a forecast would state it, in steps of five.
    const double jitter = (draw(s.region, RiskDraw, n) - 0.5) * 10;
    double risk;
    if (out.precipitation > 0)
        risk = 50 + 45 * (1 - std::exp(-out.precipitation / 4)) + jitter;
    else
        risk = std::min(45.0, 50 * today.wetChance + 25 * today.cloud + jitter);
    out.rainRisk = std::clamp(int(std::lround(risk / 5)) * 5, 0, 100);
    return out;
}

} // namespace ekinora::server::weather
