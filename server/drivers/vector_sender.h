// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/vector_gate.h"

#include <QList>

#include <cstdint>
#include <functional>
#include <optional>

namespace calvorn {

// Where the counts of a vector were measured.
struct VectorPlan
{
    std::int32_t startHz = 0; // of the first count
    std::int32_t stepHz = 0;  // from count to count
    std::int16_t mode = 0;    // MiniVNA: the number of a VnaMode; 0 elsewhere

    bool operator==(const VectorPlan &) const = default;
};

// The only way of a vector to the program: it goes out behind the plan that it was measured with, so the program can
// tell whether it belongs to its table. Main thread only.
class VectorSender
{
public:
    using EmitPlan = std::function<void(const VectorPlan &)>;
    using EmitVector = std::function<void(const QList<int> &)>;

    VectorSender(EmitPlan emitPlan, EmitVector emitVector);

    // The plan is announced again before the next vector.
    void beginRun() { m_announced.reset(); }

    // Sends the vector, or keeps it while the program has no room.
    void send(const VectorPlan &plan, QList<int> counts);

    // The program has taken this many vectors, and has room for as many more.
    void taken(int count);

    // Vectors that wait belong to a plan or a run that is over.
    void discardWaiting() { m_gate.discardWaiting(); }

    // Vectors that the program was too slow for.
    std::uint64_t dropped() const { return m_gate.dropped(); }

private:
    void emitNow(const QList<int> &counts);

    EmitPlan m_emitPlan;
    EmitVector m_emitVector;
    VectorGate m_gate;
    VectorPlan m_newest; // plan of the newest vector, which is the one that waits
    std::optional<VectorPlan> m_announced;
};

} // namespace calvorn
