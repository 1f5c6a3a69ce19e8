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
    std::int32_t stepHz = 0;  // from one count to the next
    std::int16_t mode = 0;    // MiniVNA: the number of a VnaMode; 0 elsewhere

    bool operator==(const VectorPlan &) const = default;
};

// Sends every vector to the program, preceded by its plan when the plan has changed, so that the program can tell
// whether a vector belongs to its table. Main thread only.
class VectorSender
{
public:
    using EmitPlan = std::function<void(const VectorPlan &)>;
    using EmitVector = std::function<void(const QList<int> &)>;

    VectorSender(EmitPlan emitPlan, EmitVector emitVector);

    // Announces the plan again before the next vector.
    void beginRun() { m_announced.reset(); }

    // Sends the vector, or stores it while the program has no room.
    void send(const VectorPlan &plan, QList<int> counts);

    // The program has processed this many vectors and has room for as many more.
    void taken(int count);

    // Drops waiting vectors, which belong to a plan or run that has ended.
    void discardWaiting() { m_gate.discardWaiting(); }

    // Returns the number of vectors that were dropped because the program was too slow.
    std::uint64_t dropped() const { return m_gate.dropped(); }

private:
    void emitNow(const QList<int> &counts);

    EmitPlan m_emitPlan;
    EmitVector m_emitVector;
    VectorGate m_gate;
    VectorPlan m_newest; // plan of the newest vector, which is the one that may wait
    std::optional<VectorPlan> m_announced;
};

} // namespace calvorn
