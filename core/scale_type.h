// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// Scale numbers in Configuration::scaleType. Any other number is treated as logarithmic, relative to 1 V, without
// headroom.
inline constexpr int kScales = 5;
inline constexpr std::int16_t kScaleLinear = 0;
inline constexpr std::int16_t kScaleDb1V = 1;
inline constexpr std::int16_t kScaleDb1VHeadroom = 2;
inline constexpr std::int16_t kScaleDb10V = 3;
inline constexpr std::int16_t kScaleDb10VHeadroom = 4;

constexpr bool isScale(std::int16_t number)
{
    return number >= 0 && number < kScales;
}

constexpr bool isLinearScale(std::int16_t scale)
{
    return scale == kScaleLinear;
}

// Returns true if 0 dB is 10 V, false if it is 1 V.
constexpr bool scaleRefersTo10V(std::int16_t scale)
{
    return scale == kScaleDb10V || scale == kScaleDb10VHeadroom;
}

// Returns the voltage at 0 dB on a logarithmic scale.
constexpr double voltsOfZeroDb(std::int16_t scale)
{
    return scaleRefersTo10V(scale) ? 10.0 : 1.0;
}

// Returns true if the top of the scale is +10 dB, false if it is 0 dB.
constexpr bool scaleHasHeadroom(std::int16_t scale)
{
    return scale == kScaleDb1VHeadroom || scale == kScaleDb10VHeadroom;
}

} // namespace calvorn
