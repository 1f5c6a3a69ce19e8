// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The maximum number of unacknowledged vectors (VectorsTaken); beyond that, the server keeps only the newest.
inline constexpr int kVectorWindow = 8;

// The number of vectors that the program acknowledges per call.
inline constexpr std::int16_t kVectorsAtOnce = 4;

static_assert(kVectorsAtOnce < kVectorWindow, "the program must acknowledge vectors before the window is full");

} // namespace calvorn
