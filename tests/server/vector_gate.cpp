// SPDX-License-Identifier: MIT
// Tests the limit on vectors that the program has not acknowledged yet.
#include "server/drivers/vector_gate.h"

#include <QTest>

using namespace calvorn;

namespace {

std::optional<QList<int>> single(int value)
{
    return QList<int>{value};
}

// Returns how many more vectors the gate would send immediately.
int roomOf(VectorGate gate)
{
    int room = 0;
    while (room < 100 && gate.offer({}))
        ++room;
    return room;
}

} // namespace

class VectorGateTest : public QObject
{
    Q_OBJECT

private slots:
    void eightGoOut();
    void newestWaits();
    void waitingCanBeDiscarded();
    void takenWithoutVectors();
    void severalTakenAtOnce();
    void countOutOfRange();
};

void VectorGateTest::eightGoOut()
{
    VectorGate gate;
    for (int index = 0; index < 8; ++index)
        QCOMPARE(gate.offer(QList<int>{index}), single(index));
    QCOMPARE(roomOf(gate), 0);
    QVERIFY(!gate.offer(QList<int>{8}).has_value());
    QCOMPARE(gate.dropped(), std::uint64_t{0});
}

void VectorGateTest::newestWaits()
{
    VectorGate gate;
    for (int index = 0; index < 20; ++index)
        gate.offer(QList<int>{index});
    QCOMPARE(gate.dropped(), std::uint64_t{11}); // 8 sent, 1 pending
    QCOMPARE(gate.taken(1), single(19));
    QCOMPARE(roomOf(gate), 0);
    QVERIFY(!gate.taken(1).has_value());
    QCOMPARE(roomOf(gate), 1);
    QCOMPARE(gate.offer(QList<int>{20}), single(20));
}

void VectorGateTest::waitingCanBeDiscarded()
{
    VectorGate gate;
    for (int index = 0; index < 9; ++index)
        gate.offer(QList<int>{index});
    gate.discardWaiting();
    gate.discardWaiting();
    QCOMPARE(gate.dropped(), std::uint64_t{1});
    QVERIFY(!gate.taken(1).has_value());
    QCOMPARE(roomOf(gate), 1);
}

void VectorGateTest::takenWithoutVectors()
{
    VectorGate gate;
    QVERIFY(!gate.taken(1).has_value());
    QCOMPARE(roomOf(gate), 8);
}

void VectorGateTest::severalTakenAtOnce()
{
    VectorGate gate;
    for (int index = 0; index < 12; ++index)
        gate.offer(QList<int>{index});
    QCOMPARE(gate.taken(4), single(11));
    QCOMPARE(roomOf(gate), 3);
    QVERIFY(!gate.taken(4).has_value());
    QCOMPARE(roomOf(gate), 7);
}

void VectorGateTest::countOutOfRange()
{
    VectorGate gate;
    for (int index = 0; index < 9; ++index)
        gate.offer(QList<int>{index});
    QVERIFY(!gate.taken(0).has_value());
    QVERIFY(!gate.taken(-32768).has_value());
    QCOMPARE(roomOf(gate), 0);
    QCOMPARE(gate.taken(32767), single(8));
    QCOMPARE(roomOf(gate), 7);
}

QTEST_APPLESS_MAIN(VectorGateTest)
#include "vector_gate.moc"
