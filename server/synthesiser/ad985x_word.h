// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <array>
#include <cstdint>

namespace calvorn {

inline constexpr int kAd985xSerialBits = 40;

// One load of an AD9850 or AD9851 (data sheets: table of the 40-bit word).
struct Ad985xWord
{
    std::uint8_t control = 0; // W0: D7..D3 phase in steps of 11.25 degrees, D2 power-down, D0 x6 (AD9851 only)
    std::uint32_t frequency = 0;

    // W0 W1 W2 W3 W4, the order of a parallel load.
    std::array<std::uint8_t, 5> bytes() const;

    // The word for a serial load: bit 0 is sent first, bit 39 last.
    std::uint64_t serialBits() const;
};

// A 1 in the two lowest control bits of an AD9850 starts factory tests, which have destroyed users' chips. These bits
// are therefore always masked. phase: 0..31; powerDown: switches the output off until the next load.
Ad985xWord ad985xWord(const DdsClock &clock, std::uint32_t frequency, std::uint8_t phase = 0, bool powerDown = false);

} // namespace calvorn
