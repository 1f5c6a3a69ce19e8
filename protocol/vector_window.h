// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// Vectors that the server sends before it has to hear VectorsTaken; of what comes beyond that only the newest waits.
inline constexpr int kVectorWindow = 8;

// Vectors that the program takes before it says so.
inline constexpr std::int16_t kVectorsAtOnce = 4;

static_assert(kVectorsAtOnce < kVectorWindow, "the server would wait for an answer that the program does not owe yet");

} // namespace calvorn
