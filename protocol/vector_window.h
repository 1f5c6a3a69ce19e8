// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The number of vectors that the server sends without a VectorsTaken; beyond that only the newest vector is kept.
inline constexpr int kVectorWindow = 8;

// The number of vectors that the program acknowledges at once.
inline constexpr std::int16_t kVectorsAtOnce = 4;

static_assert(kVectorsAtOnce < kVectorWindow, "the program must acknowledge vectors before the window is full");

} // namespace calvorn
