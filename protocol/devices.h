// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

namespace calvorn {

// The generator chips, in the order of kDdsChips.
enum class DdsChip { Ad9850, Ad9851, Ad9951 };

// Facts of a generator chip, from the front page of its data sheet and the promises of the makers of modules. Hz.
struct DdsChipFacts
{
    const char *name;           // the argument of SetDdsDevice, and the value of the key "DDS Device"
    double highestClock;        // system clock, after the multiplier
    double highestOutput;       // behind an ordinary low-pass filter
    double outputOfClock;       // the same as a part of the system clock
    double highestPllInput;     // reference clock where the multiplier is used; 0: no limit
    std::int16_t multiplierLow; // of the multiplier, beside 1; 0: the chip has none
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

// What a settings file that does not say otherwise stands for: the program tells the board so, and the simulated one is
// made so.
inline constexpr DdsChip kDefaultDdsChip = DdsChip::Ad9850;
inline constexpr const char *kDefaultXtalText = "80000000"; // as the settings file has it
inline constexpr std::int32_t kDefaultXtalHz = [] {
    std::int32_t hertz = 0;
    for (const char *digit = kDefaultXtalText; *digit != '\0'; ++digit)
        hertz = 10 * hertz + (*digit - '0');
    return hertz;
}();

// The detector converters: the argument of SetAdcDevice, and the value of the key "ADC Device".
inline constexpr const char *kAdc8Bit = "8bit";
inline constexpr const char *kAdc10Bit = "10bit"; // where the settings do not say otherwise
inline constexpr int kHighestCount8Bit = 255;
inline constexpr int kHighestCount10Bit = 1023;

} // namespace calvorn
