// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The argument of StopSweep.
inline constexpr std::int16_t kStopForNewRange = 1; // the range changed during a sweep; another sweep follows
inline constexpr std::int16_t kStopForUser = 2;     // stopped by the user, or the program is exiting

} // namespace calvorn
