// SPDX-License-Identifier: MIT
#pragma once

#include "core/number_text.h"
#include "data/sweep_table.h"
#include "tests/support/interface_settings.h"

namespace calvorn::test {

// The series resonance, 9.000 MHz, in steps of 250 Hz.
inline constexpr int kCrystalRow = 201;

inline int peakRow(const SweepTable &table)
{
    const NumberText numbers;
    int peak = 1;
    double highest = -1e9;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double amplitude = numbers.toDouble(table.text(row, SweepTable::AmplitudeColumn));
        if (amplitude > highest) {
            highest = amplitude;
            peak = row;
        }
    }
    return peak;
}

} // namespace calvorn::test
