// SPDX-License-Identifier: MIT
#pragma once

#include "data/limit_lines.h"

#include <cstddef>
#include <span>

namespace calvorn {

struct LimitVerdict
{
    std::size_t judged = 0;  // samples at whose frequency there is a limit
    std::size_t outside = 0; // those that break one

    // The sample that breaks its limit by most, or comes nearest to it; of several the first. Only where hasVerdict().
    double frequency = 0.0; // Hz
    double value = 0.0;     // in the unit of the limits, like those below; -infinity below the detector's floor
    double limit = 0.0;
    double margin = 0.0; // from the limit inwards: 0 on it, negative outside, infinite where the value is
    bool isUpper = false;

    bool hasVerdict() const { return judged > 0; }
    bool hasPassed() const { return hasVerdict() && outside == 0; }
};

// Each sample is judged at its own frequency; a gap (not a number) is skipped. On the limit is inside.
// frequencies: Hz, in any order. amplitudes: as many, in the unit of the limits.
LimitVerdict judge(const LimitLines &limits, std::span<const double> frequencies, std::span<const double> amplitudes);

} // namespace calvorn
