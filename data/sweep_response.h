// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <optional>

namespace calvorn {

// What a sweep says about the device that was measured.
struct SweepResponse
{
    double peak = 0.0;          // volts or dB, as the table has them
    double peakFrequency = 0.0; // Hz, of the first row that has it
    // Where the curve is 3 dB below the peak, on either side of it, Hz; interpolated between rows. Empty where it does
    // not fall that far inside the range. The lower one is that of the lower frequency.
    std::optional<double> lower;
    std::optional<double> upper;

    std::optional<double> bandwidth() const; // Hz
};

// linear: the table holds volts, otherwise dB. RuntimeError(TypeMismatch) when a cell holds no number.
SweepResponse responseOf(const SweepTable &table, bool linear);

} // namespace calvorn
