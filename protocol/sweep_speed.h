// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The settling time per frequency on the parallel-port board: the argument of SetSpeed. Only the first three can be
// stored as a setting.
enum class SweepSpeed : std::int16_t {
    Standard = 0,
    Slow = 1,
    VerySlow = 2,
    Calibration = 3, // the slowest, for detector calibration
};

constexpr std::int16_t numberOf(SweepSpeed speed)
{
    return static_cast<std::int16_t>(speed);
}

} // namespace calvorn
