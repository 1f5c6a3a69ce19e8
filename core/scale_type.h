// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// What the number of a scale (Configuration::scaleType) means. Any number that is no scale is logarithmic, of 1 V and
// without headroom.
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

// Whether 0 dB is 10 V; otherwise it is 1 V.
constexpr bool scaleRefersTo10V(std::int16_t scale)
{
    return scale == kScaleDb10V || scale == kScaleDb10VHeadroom;
}

// Whether the scale reaches from +10 dB; otherwise from 0 dB.
constexpr bool scaleHasHeadroom(std::int16_t scale)
{
    return scale == kScaleDb1VHeadroom || scale == kScaleDb10VHeadroom;
}

} // namespace calvorn
