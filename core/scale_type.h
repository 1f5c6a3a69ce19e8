// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace calvorn {

// Scale numbers in Configuration::scaleType. Any other number is treated as logarithmic, relative to 1 V, without
// headroom.
inline constexpr std::int16_t kScaleLinear = 0;
inline constexpr std::int16_t kScaleDb1V = 1;
inline constexpr std::int16_t kScaleDb1VHeadroom = 2;
inline constexpr std::int16_t kScaleDb10V = 3;
inline constexpr std::int16_t kScaleDb10VHeadroom = 4;

struct ScaleType
{
    const char *name; // for the option --scale
    const char *word; // for SCPI, with the short form in capitals
    double voltsOfZeroDb;
    bool isLinear;
    bool hasHeadroom; // the top of the scale is +10 dB, not 0 dB
};

// Indexed by scale number.
inline constexpr std::array kScaleTypes{
    ScaleType{"linear", "LINear", 1.0, true, false},       ScaleType{"1V", "DBV", 1.0, false, false},
    ScaleType{"1V+10dB", "DBVHead", 1.0, false, true},     ScaleType{"10V", "DB10V", 10.0, false, false},
    ScaleType{"10V+10dB", "DB10VHead", 10.0, false, true},
};
inline constexpr int kScales = static_cast<int>(kScaleTypes.size());

constexpr bool isScale(std::int16_t number)
{
    return number >= 0 && number < kScales;
}

constexpr const ScaleType &scaleType(std::int16_t number)
{
    return kScaleTypes[static_cast<std::size_t>(isScale(number) ? number : kScaleDb1V)];
}

constexpr bool isLinearScale(std::int16_t number)
{
    return scaleType(number).isLinear;
}

// Returns the voltage at 0 dB on a logarithmic scale.
constexpr double voltsOfZeroDb(std::int16_t number)
{
    return scaleType(number).voltsOfZeroDb;
}

// Returns true if the top of the scale is +10 dB, false if it is 0 dB.
constexpr bool scaleHasHeadroom(std::int16_t number)
{
    return scaleType(number).hasHeadroom;
}

} // namespace calvorn
