// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The quantity measured by the MiniVNA: the argument of SetMode and the mode of PlanOfVectors.
enum class VnaMode : std::int16_t {
    Parked = 0, // SetMode only: the generator is off
    Angle = 1,
    ReturnLoss = 2,
    Device = 3, // device under test: counts fall as the signal rises
};

constexpr std::int16_t numberOf(VnaMode mode)
{
    return static_cast<std::int16_t>(mode);
}

// The number of steps of the instrument's 10-bit converters; counts range from 0 to kVnaFullScale - 1.
inline constexpr int kVnaFullScale = 1024;

// The instrument's frequency range, Hz.
inline constexpr std::int32_t kVnaLowestHz = 100'000;
inline constexpr std::int32_t kVnaHighestHz = 180'000'000;

} // namespace calvorn
