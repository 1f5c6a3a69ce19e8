// SPDX-License-Identifier: MIT
#pragma once

#include "data/limit_lines.h"

#include <cstddef>
#include <span>

namespace calvorn {

struct LimitVerdict
{
    std::size_t judged = 0;  // samples at whose frequency a limit exists
    std::size_t outside = 0; // samples that break a limit

    // The sample with the smallest margin; the first one if several are equal. Valid only if hasVerdict().
    double frequency = 0.0; // Hz
    double value = 0.0;     // unit of the limits, like the members below; -infinity below the detector's floor
    double limit = 0.0;
    double margin = 0.0; // distance inside the limit: 0 on it, negative outside; infinite for an infinite value
    bool isUpper = false;

    bool hasVerdict() const { return judged > 0; }
    bool hasPassed() const { return hasVerdict() && outside == 0; }
};

// Judges each sample at its own frequency and skips gaps (NaN). A value on the limit is inside.
// frequencies: Hz, in any order. amplitudes: one for each frequency, in the unit of the limits.
LimitVerdict judge(const LimitLines &limits, std::span<const double> frequencies, std::span<const double> amplitudes);

} // namespace calvorn
