// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <array>
#include <cstdint>

namespace calvorn {

// Serial transfers to the AD9951: the instruction byte, then the register's bytes, all sent MSB first. The chip
// activates a written register on the next rising edge of I/O UPDATE.

// Control function register 1: makes SDIO an input only (three-wire bus). powerDown switches the DAC off.
std::array<std::uint8_t, 5> ad9951Cfr1(bool powerDown = false);

// Control function register 2: clock multiplier, VCO range (upper range above 250 MHz) and a charge pump current of
// 75 uA, which suits the usual loop filter. All zero if the multiplier is bypassed.
std::array<std::uint8_t, 4> ad9951Cfr2(const DdsClock &clock);

// Frequency tuning word.
std::array<std::uint8_t, 5> ad9951Ftw0(std::uint32_t frequency);

} // namespace calvorn
