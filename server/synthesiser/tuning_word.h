// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

#include <cstdint>

namespace calvorn {

// Returns round((hertz + offsetHz) * 2^32 / systemClock), in exact integer arithmetic; the offset is rounded to
// 1e-6 Hz. A frequency above half the system clock has a valid word, for which the chip outputs the image. Throws
// FrequencyError if the word is negative or needs more than 32 bits, or if the system clock is 0.
std::uint32_t tuningWord(std::int64_t hertz, double offsetHz, std::uint64_t systemClockHz);

} // namespace calvorn
