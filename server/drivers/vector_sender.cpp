// SPDX-License-Identifier: MIT
#include "server/drivers/vector_sender.h"

#include <utility>

namespace calvorn {

VectorSender::VectorSender(EmitPlan emitPlan, EmitVector emitVector)
    : m_emitPlan(std::move(emitPlan))
    , m_emitVector(std::move(emitVector))
{
}

void VectorSender::send(const VectorPlan &plan, QList<int> counts)
{
    m_newest = plan;
    if (const auto now = m_gate.offer(std::move(counts)))
        emitNow(*now);
}

void VectorSender::taken(int count)
{
    if (const auto now = m_gate.taken(count))
        emitNow(*now);
}

void VectorSender::emitNow(const QList<int> &counts)
{
    if (m_announced != m_newest) {
        m_announced = m_newest;
        m_emitPlan(m_newest);
    }
    m_emitVector(counts);
}

} // namespace calvorn
