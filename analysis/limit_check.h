// SPDX-License-Identifier: MIT
#pragma once

#include "data/limit_lines.h"

#include <cstddef>
#include <span>

namespace calvorn {

struct LimitVerdict
{
    std::size_t judged = 0;  // samples at frequencies that have a limit
    std::size_t outside = 0; // samples that violate a limit

    // The first sample with the smallest margin. Valid only if hasVerdict().
    double frequency = 0.0; // Hz
    double value = 0.0;     // in the limits' unit, like the members below; -infinity below the detector's floor
    double limit = 0.0;
    double margin = 0.0; // positive inside the limit, 0 on it, negative outside; infinite for an infinite value
    bool isUpper = false;

    bool hasVerdict() const { return judged > 0; }
    bool hasPassed() const { return hasVerdict() && outside == 0; }
};

// Judges each sample against the limits at its frequency; skips gaps (NaN). A value equal to the limit passes.
// frequencies: Hz, in any order. amplitudes: one for each frequency, in the limits' unit.
LimitVerdict judge(const LimitLines &limits, std::span<const double> frequencies, std::span<const double> amplitudes);

} // namespace calvorn
