// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/vector_window.h"

#include <QList>

#include <cstdint>
#include <optional>

namespace calvorn {

// Limits the vectors sent to a slow program: at most kVectorWindow are sent without an acknowledgement. Of the later
// ones, only the newest is stored, to be sent after the next acknowledgement. Main thread only.
class VectorGate
{
public:
    using Vector = QList<int>;

    // Takes a new vector. Returns the vector if it should be sent now.
    std::optional<Vector> offer(Vector vector);

    // The program has processed this many vectors; values below 0 count as 0, values above the number outstanding as
    // that number. Returns the vector to send now, if one waits.
    std::optional<Vector> taken(int count);

    // Drops the waiting vector, which belongs to a plan or sweep that has ended.
    void discardWaiting();

    // The number of vectors that will never be sent.
    std::uint64_t dropped() const { return m_dropped; }

private:
    int m_outstanding = 0;
    std::optional<Vector> m_waiting;
    std::uint64_t m_dropped = 0;
};

} // namespace calvorn
