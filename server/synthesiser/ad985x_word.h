// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <array>
#include <cstdint>

namespace calvorn {

inline constexpr int kAd985xSerialBits = 40;

// The data loaded into an AD9850 or AD9851 (data sheets: table of the 40-bit word).
struct Ad985xWord
{
    std::uint8_t control = 0; // W0: D7..D3 phase in steps of 11.25 degrees, D2 power-down, D0 x6 (AD9851 only)
    std::uint32_t frequency = 0;

    // Returns W0 W1 W2 W3 W4, in the order of parallel loading.
    std::array<std::uint8_t, 5> bytes() const;

    // Returns the word for serial loading: bit 0 is sent first, bit 39 last.
    std::uint64_t serialBits() const;
};

// In an AD9850, setting either of the two lowest control bits starts factory tests, which have destroyed users' chips.
// These bits are therefore always masked. phase: 0..31; powerDown: switches the output off until the next load.
Ad985xWord ad985xWord(const DdsClock &clock, std::uint32_t frequency, std::uint8_t phase = 0, bool powerDown = false);

} // namespace calvorn
