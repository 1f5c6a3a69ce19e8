// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/vector_gate.h"

#include <QList>

#include <cstdint>
#include <functional>
#include <optional>

namespace calvorn {

// The plan with which a vector was measured.
struct VectorPlan
{
    std::int32_t startHz = 0; // frequency of the first count
    std::int32_t stepHz = 0;  // between successive counts
    std::int16_t mode = 0;    // the VnaMode as a number; 0 for the other boards

    bool operator==(const VectorPlan &) const = default;
};

// Sends vectors to the program. If the plan has changed, it is announced before the vector, so that the program can
// tell whether the vector belongs to its table. Main thread only.
class VectorSender
{
public:
    using EmitPlan = std::function<void(const VectorPlan &)>;
    using EmitVector = std::function<void(const QList<int> &)>;

    VectorSender(EmitPlan emitPlan, EmitVector emitVector);

    // Announces the plan again before the next vector.
    void beginRun() { m_announced.reset(); }

    // Sends the vector, or stores it while the program cannot accept more.
    void send(const VectorPlan &plan, QList<int> counts);

    // Called when the program has processed this many vectors and can accept as many more.
    void taken(int count);

    // Discards the pending vector, because its plan or run has ended.
    void discardWaiting() { m_gate.discardWaiting(); }

    // Returns the number of vectors that were discarded because the program was too slow.
    std::uint64_t dropped() const { return m_gate.dropped(); }

private:
    void emitNow(const QList<int> &counts);

    EmitPlan m_emitPlan;
    EmitVector m_emitVector;
    VectorGate m_gate;
    VectorPlan m_newest; // the plan of the newest vector, the only one that can be pending
    std::optional<VectorPlan> m_announced;
};

} // namespace calvorn
