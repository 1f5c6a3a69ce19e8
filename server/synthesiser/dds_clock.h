// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/devices.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace calvorn {

// Returns the chip with that name in kDdsChips, ignoring case, or nothing.
std::optional<DdsChip> ddsChipFromName(const QString &name);

// Thrown for a frequency or a clock that no tuning word can express. what() is one sentence for the user.
class FrequencyError : public std::range_error
{
public:
    using std::range_error::range_error;
};

// Thrown for a generator setting that cannot work. what() is one sentence for the user and names the key.
class SettingError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The reference clock of a synthesiser board, and the multiplier that turns it into the system clock.
struct DdsClock
{
    DdsChip chip = kDefaultDdsChip;
    double xtalHz = kDefaultXtalHz; // whole hertz; a fraction is rounded to the nearest hertz
    int multiplier = 1;

    bool operator==(const DdsClock &) const = default;
};

// The factor between the crystal and the system clock:
//   AD9850  the multiplier as given, at least 1 (the chip has no multiplier; this one is outside the chip)
//   AD9851  6 when the multiplier is 6, otherwise 1
//   AD9951  the multiplier if the chip's PLL supports it (4..20), otherwise 1: the PLL is bypassed
int effectiveMultiplier(const DdsClock &clock);

// Throws SettingError when the chip itself does not have this multiplier: an AD9850 has only 1, an AD9851 1 and 6, an
// AD9951 1 and 4..20. 0 counts as 1.
void checkMultiplier(const DdsClock &clock);

// Returns the system clock in whole Hz. Throws FrequencyError when the crystal is not between 1 Hz and 1 THz.
std::uint64_t systemClockHz(const DdsClock &clock);

// Returns the highest frequency (Hz) at which the chip's output is useful behind an ordinary low-pass filter: 0.325 of
// the clock for the AD9850 (26 MHz at 80 MHz) and 0.4 for the AD9851 and the AD9951, limited to the maximum on the
// front pages of their data sheets and in the specifications of common modules. Throws like systemClockHz().
double usefulMaximumHz(const DdsClock &clock);

} // namespace calvorn
