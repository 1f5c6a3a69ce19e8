// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Points of a sweep on every interface: the counts of one aVettore, and the rows of the program's table.
inline constexpr int kSweepPoints = 400;

} // namespace calvorn
