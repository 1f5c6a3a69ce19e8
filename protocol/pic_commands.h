// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>

namespace calvorn {

// The commands of SendFrequency in calvorn.Pic, which are also the letters sent to the board
// (docs/hardware/pic-board.md).
inline constexpr QLatin1String kPicOutput("A"); // output frequency, Hz
inline constexpr QLatin1String kPicStart("B");  // first frequency of a sweep, Hz
inline constexpr QLatin1String kPicStep("D");   // step of a sweep, Hz; negative for a descending one
inline constexpr QLatin1String kPicReset("*");  // reset; takes no frequency

// Commands that the server sends on its own.
inline constexpr QLatin1String kPicSettle("S"); // settling time of the detector, microseconds

} // namespace calvorn
