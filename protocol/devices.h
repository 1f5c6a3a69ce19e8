// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

namespace calvorn {

// The generator chips, in the order of kDdsChips.
enum class DdsChip { Ad9850, Ad9851, Ad9951 };

// Limits of a generator chip, from the front page of its data sheet and from module makers' specifications.
// Frequencies are in Hz.
struct DdsChipFacts
{
    const char *name;           // the argument of SetDdsDevice and the value of the "DDS Device" key
    double highestClock;        // system clock after the multiplier
    double highestOutput;       // with an ordinary low-pass filter
    double outputOfClock;       // the same limit as a fraction of the system clock
    double highestPllInput;     // reference clock if the multiplier is used; 0: no limit
    std::int16_t multiplierLow; // multiplier range, in addition to 1; 0: no multiplier
    std::int16_t multiplierHigh;
};

inline constexpr std::array<DdsChipFacts, 3> kDdsChips = {{
    {"AD9850", 125e6, 40e6, 0.325, 0.0, 0, 0},
    {"AD9851", 180e6, 70e6, 0.4, 30e6, 6, 6},
    {"AD9951", 400e6, 160e6, 0.4, 0.0, 4, 20},
}};

constexpr const DdsChipFacts &factsOf(DdsChip chip)
{
    return kDdsChips[static_cast<std::size_t>(chip)];
}

// The settings-file defaults. The program sends them to the board, and the simulated board starts with them.
inline constexpr DdsChip kDefaultDdsChip = DdsChip::Ad9850;
inline constexpr const char *kDefaultXtalText = "80000000"; // as written in the settings file
inline constexpr std::int32_t kDefaultXtalHz = [] {
    std::int32_t hertz = 0;
    for (const char *digit = kDefaultXtalText; *digit != '\0'; ++digit)
        hertz = 10 * hertz + (*digit - '0');
    return hertz;
}();

// The detector converters: the argument of SetAdcDevice and the value of the "ADC Device" key.
inline constexpr const char *kAdc8Bit = "8bit";
inline constexpr const char *kAdc10Bit = "10bit"; // the default setting
inline constexpr int kHighestCount8Bit = 255;
inline constexpr int kHighestCount10Bit = 1023;

} // namespace calvorn
