// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// The number of points per sweep on every interface: counts in an aVettore signal, rows in the program's table.
inline constexpr int kSweepPoints = 400;

} // namespace calvorn
