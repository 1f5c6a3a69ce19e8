// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <cstdint>

namespace calvorn {

// round((hertz + offsetHz) * 2^32 / systemClock), in exact integer arithmetic; the offset counts in steps of
// 1e-6 Hz. A frequency above half the system clock is a legal word: the chip then makes its image.
// Throws FrequencyError when the word is negative or needs more than 32 bits, or the system clock is 0.
std::uint32_t tuningWord(std::int64_t hertz, double offsetHz, std::uint64_t systemClockHz);

} // namespace calvorn
