// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/vector_window.h"

#include <QList>

#include <cstdint>
#include <optional>

namespace calvorn {

// Keeps a slow program from drowning in vectors. At most kVectorWindow have been sent and not been taken; of
// what comes beyond that only the newest waits, to go out with the next acknowledgement. Main thread only.
class VectorGate
{
public:
    using Vector = QList<int>;

    // A new vector. Returns it when it is to be sent now.
    std::optional<Vector> offer(Vector vector);

    // The program has taken this many; more than are outstanding count as all of them, fewer than one as none. Returns
    // the vector that is to be sent now, if one waits.
    std::optional<Vector> taken(int count);

    // The vector that waits belongs to a plan or sweep that is over.
    void discardWaiting();

    // Vectors that will never be sent.
    std::uint64_t dropped() const { return m_dropped; }

private:
    int m_outstanding = 0;
    std::optional<Vector> m_waiting;
    std::uint64_t m_dropped = 0;
};

} // namespace calvorn
