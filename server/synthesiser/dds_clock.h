// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/devices.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace calvorn {

// Returns the chip with this name in kDdsChips, ignoring case, or nullopt.
std::optional<DdsChip> ddsChipFromName(const QString &name);

// Thrown for a frequency without a tuning word, or for an invalid clock. what() is a message for the user.
class FrequencyError : public std::range_error
{
public:
    using std::range_error::range_error;
};

// Thrown for a generator setting that cannot work. what() is a message for the user that names the key.
class SettingError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// A synthesiser board's reference clock, and the multiplier that turns it into the system clock.
struct DdsClock
{
    DdsChip chip = kDefaultDdsChip;
    double xtalHz = kDefaultXtalHz; // whole hertz; a fraction is rounded to the nearest hertz
    int multiplier = 1;

    bool operator==(const DdsClock &) const = default;
};

// Returns the system clock as a multiple of the crystal frequency:
//   AD9850  the configured multiplier, at least 1 (the chip has none, so the multiplier is outside the chip)
//   AD9851  6 if the multiplier is 6, otherwise 1
//   AD9951  the multiplier if the chip's PLL supports it (4..20), otherwise 1: the PLL is bypassed
int effectiveMultiplier(const DdsClock &clock);

// Throws SettingError if the chip itself does not support this multiplier: an AD9850 supports only 1, an AD9851 1 and
// 6, an AD9951 1 and 4..20. 0 is treated as 1.
void checkMultiplier(const DdsClock &clock);

// Returns the system clock in whole Hz. Throws FrequencyError if the crystal is not between 1 Hz and 1 THz.
std::uint64_t systemClockHz(const DdsClock &clock);

// Returns the highest frequency (Hz) at which the chip's output is useful with an ordinary low-pass filter: 0.325 of
// the clock for the AD9850 (26 MHz at 80 MHz) and 0.4 for the AD9851 and the AD9951, up to the maximum stated on the
// front pages of their data sheets and in the specifications of common modules. Throws the same as systemClockHz().
double usefulMaximumHz(const DdsClock &clock);

} // namespace calvorn
