// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// How long the parallel-port board lets a frequency settle: the argument of SetSpeed. The settings keep the first
// three.
enum class SweepSpeed : std::int16_t {
    Standard = 0,
    Slow = 1,
    VerySlow = 2,
    Calibration = 3, // the slowest, for the calibration of the detector
};

constexpr std::int16_t numberOf(SweepSpeed speed)
{
    return static_cast<std::int16_t>(speed);
}

} // namespace calvorn
