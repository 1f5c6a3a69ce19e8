// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// The number of points in a sweep on every interface: counts in an aVettore, rows in the program's table.
inline constexpr int kSweepPoints = 400;

} // namespace calvorn
