#pragma once

#include <array>
#include <cstdint>

namespace ekinora::server::weather {

// How the year's rain is spread and how the air behaves, by the country's climate regions.
enum class Regime {
    Mediterranean, // wet mild winters, dry hot summers (south and Aegean)
    Marmara,       // between the Mediterranean and the Black Sea
    BlackSea,      // rain all year, most in autumn, small daily range
    Continental,   // the central plateau: dry, large daily range, spring rain
    Eastern,       // the eastern highlands: long snowy winters, spring rain
    Southeastern,  // hot dry summers, winter rain
};

// Normals of one province's centre: the mean temperatures of its coldest and warmest months,
// the year's precipitation, its regime, and whether it lies on the sea (milder nights, sea breeze).
struct Climate {
    double januaryMean;
    double julyMean;
    double annualPrecipitation; // mm
    Regime regime;
    bool coastal;
};

// By province (plate number, 1 to 81); nullptr for any other number.
const Climate* provinceClimate(std::int64_t cityId);

// The share of the year's precipitation that falls in each month, January first; sums to 1.
const std::array<double, 12>& monthlyShares(Regime regime);

} // namespace ekinora::server::weather
