// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/vector_window.h"

#include <QList>

#include <cstdint>
#include <optional>

namespace calvorn {

// Limits the number of unacknowledged vectors to kVectorWindow, in case the program is slow. Beyond that, only the
// newest vector is stored, to be sent after the next acknowledgement. Main thread only.
class VectorGate
{
public:
    using Vector = QList<int>;

    // Accepts a new vector. Returns it if it should be sent now; otherwise stores it.
    std::optional<Vector> offer(Vector vector);

    // Called when the program has processed this many vectors; `count` is clamped to the number outstanding. Returns
    // the pending vector if there is one and it should be sent now.
    std::optional<Vector> taken(int count);

    // Discards the pending vector, because its plan or sweep has ended.
    void discardWaiting();

    // Returns the number of vectors discarded without being sent.
    std::uint64_t dropped() const { return m_dropped; }

private:
    int m_outstanding = 0;
    std::optional<Vector> m_waiting;
    std::uint64_t m_dropped = 0;
};

} // namespace calvorn
