// SPDX-License-Identifier: MIT
#include "server/drivers/vector_gate.h"

#include <algorithm>
#include <utility>

namespace calvorn {

std::optional<VectorGate::Vector> VectorGate::offer(Vector vector)
{
    if (m_outstanding < kVectorWindow) {
        ++m_outstanding;
        return vector;
    }
    discardWaiting();
    m_waiting = std::move(vector);
    return std::nullopt;
}

std::optional<VectorGate::Vector> VectorGate::taken(int count)
{
    m_outstanding -= std::clamp(count, 0, m_outstanding);
    if (!m_waiting || m_outstanding == kVectorWindow)
        return std::nullopt;
    ++m_outstanding;
    return std::exchange(m_waiting, std::nullopt);
}

void VectorGate::discardWaiting()
{
    if (!m_waiting)
        return;
    m_waiting.reset();
    ++m_dropped;
}

} // namespace calvorn
