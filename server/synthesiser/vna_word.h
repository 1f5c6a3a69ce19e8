// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// A sweep as the MiniVNA computes it: sample k has the tuning word start + k * step. The instrument treats both as
// unsigned numbers, so a descending sweep is measured upwards and its samples are reversed.
struct VnaSweepWords
{
    std::uint32_t start = 0;
    std::uint32_t step = 0;
    bool descending = false;

    bool operator==(const VnaSweepWords &) const = default;
};

// Returns the words for a sweep from startHz in steps of stepHz (negative: downwards), at this system clock (Hz). The
// offset shifts every frequency, so only the start word includes it. Both words are rounded to the nearest integer; the
// rounding error of the step accumulates, so the word of sample k may differ from the plan by (k + 1) / 2.
// samples: at least 1. Throws FrequencyError if a word in the sweep is negative or needs more than 32 bits.
VnaSweepWords vnaSweepWords(std::int64_t startHz, std::int64_t stepHz, int samples, double offsetHz,
                            std::uint64_t systemClockHz);

} // namespace calvorn
