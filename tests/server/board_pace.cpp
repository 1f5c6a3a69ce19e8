// SPDX-License-Identifier: MIT
// Tests that the simulated board runs in real time and sleeps while it waits.
#include "tests/server/lpt_bench.h"

#include <QElapsedTimer>
#include <QTest>

#include <ctime>

using namespace calvorn;

class BoardPaceTest : public QObject
{
    Q_OBJECT

private slots:
    void sweepsTakeRealTime_data();
    void sweepsTakeRealTime();
    void idleTimeIsNotCaughtUp();
    void unpacedDoesNotWait();
};

namespace {

void sweep(LptBoard &board)
{
    for (int point = 0; point < LptBench::kPoints; ++point)
        board.measure(1'000'000 + 20'000 * point);
}

double processorMs()
{
    return 1'000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Returns the processor time in ms that an unpaced sweep uses: the cost of simulating the pins.
double processorOfUnpacedSweep(SweepSpeed speed)
{
    LptBoard board;
    board.attach(std::make_unique<SimulatedParallelPort>(unpacedSettings()));
    board.setSpeed(speed);
    board.measure(1'000'000);
    const double before = processorMs();
    sweep(board);
    return processorMs() - before;
}

} // namespace

void BoardPaceTest::sweepsTakeRealTime_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("haste");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most"); // generous, because the machine may be busy
    QTest::newRow("standard") << 0 << 1 << 95 << 1'000;
    QTest::newRow("slow") << 1 << 1 << 400 << 3'000;
    QTest::newRow("very slow") << 2 << 1 << 1'900 << 10'000;
    QTest::newRow("very slow, a clock four times faster") << 2 << 4 << 475 << 1'900;
}

void BoardPaceTest::sweepsTakeRealTime()
{
    QFETCH(int, speed);
    QFETCH(int, haste);
    QFETCH(int, least);
    QFETCH(int, most);
    const double work = processorOfUnpacedSweep(static_cast<SweepSpeed>(speed));
    SimulatorSettings settings;
    settings.haste = haste;
    LptBoard board;
    board.attach(std::make_unique<SimulatedParallelPort>(settings));
    board.setSpeed(static_cast<SweepSpeed>(speed));
    board.measure(1'000'000);
    QElapsedTimer clock;
    clock.start();
    const double processor = processorMs();
    sweep(board);
    const double burnt = processorMs() - processor;
    const auto took = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    qInfo("paced sweep: %.1f ms, %.1f ms of them on the processor; unpaced %.1f ms", took, burnt, work);
    QVERIFY(took >= least);
    QVERIFY(took < most);
    // A busy-waiting board would use the processor all the time.
    QVERIFY(burnt - work < took / 2);
}

void BoardPaceTest::idleTimeIsNotCaughtUp()
{
    LptBoard board;
    board.attach(std::make_unique<SimulatedParallelPort>(SimulatorSettings{}));
    board.measure(1'000'000);
    QTest::qSleep(150);
    QElapsedTimer clock;
    clock.start();
    sweep(board);
    QVERIFY(clock.elapsed() >= 80);
}

// Without pacing, only computation takes time; a paced board needs two seconds for this sweep.
void BoardPaceTest::unpacedDoesNotWait()
{
    LptBoard board;
    board.attach(std::make_unique<SimulatedParallelPort>(unpacedSettings()));
    board.setSpeed(SweepSpeed::VerySlow);
    QElapsedTimer clock;
    clock.start();
    sweep(board);
    QVERIFY(clock.elapsed() < 1'000);
}

QTEST_APPLESS_MAIN(BoardPaceTest)
#include "board_pace.moc"
