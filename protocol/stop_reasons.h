// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The argument of StopSweep.
inline constexpr std::int16_t kStopForNewRange = 1; // the range changed during a sweep; the next one follows
inline constexpr std::int16_t kStopForUser = 2;     // the user, or the end of the program, wants no more sweeps

} // namespace calvorn
