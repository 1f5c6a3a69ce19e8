// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>

namespace calvorn {

// The commands for SendFrequency in calvorn.Pic; the server sends the same letters to the board
// (docs/hardware/pic-board.md).
inline constexpr QLatin1String kPicOutput("A"); // output frequency, Hz
inline constexpr QLatin1String kPicStart("B");  // first frequency of a sweep, Hz
inline constexpr QLatin1String kPicStep("D");   // sweep step, Hz; negative for a descending sweep
inline constexpr QLatin1String kPicReset("*");  // reset; takes no frequency

// A command that the server sends on its own.
inline constexpr QLatin1String kPicSettle("S"); // detector settling time, microseconds

} // namespace calvorn
