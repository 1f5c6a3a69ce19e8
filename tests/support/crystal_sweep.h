// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"
#include "tests/support/interface_settings.h"
#include "tests/support/walk_numbers.h"

namespace calvorn::test {

// The row of the 9.000 MHz series resonance in a sweep from 8.95 MHz in steps of 250 Hz.
inline constexpr int kCrystalRow = 201;

inline int peakRow(const SweepTable &table)
{
    const WalkNumbers numbers{QLocale()};
    int peak = 1;
    double highest = -1e9;
    for (int row = 1; row <= 400; ++row) {
        const double amplitude = numbers.number(table.text(row, SweepTable::AmplitudeColumn));
        if (amplitude > highest) {
            highest = amplitude;
            peak = row;
        }
    }
    return peak;
}

} // namespace calvorn::test
