// SPDX-License-Identifier: MIT
// Tests how sweeps start, change plans, fail and stop: each sends one aComplete and no vector from an earlier plan.
#include "server/boards/ad985x_model.h"
#include "tests/server/lpt_bench.h"
#include "tests/support/quiet_time.h"

#include <QCoreApplication>
#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {

// The default device yields counts above kLimit in its pass band, and lower counts far below the band.
constexpr int kHighHz = 7'100'000;
constexpr int kLowHz = 1'000'000;
constexpr int kLimit = 100;

} // namespace

class LptSweepLifeTest : public QObject
{
    Q_OBJECT

private slots:
    void stopInMidVectorCompletesOnce();
    void stopWhenIdle();
    void runTwiceIsHarmless();
    void runWhileStopping();
    void replanNeverShowsTheFormerPlan();
    void waitingVectorOfTheFormerPlanIsGone();
    void slowProgramGetsTheNewest();
    void closedPortRefusesASweep();
    void otherOperationsWithoutAPort();
    void closingEndsTheSweep();
    void failedOpenLeavesThePortClosed();
    void frequencyThatDoesNotFit();
    void parkedFrequency();
    void chipStartsByItself();
    void changedClockStartsTheChipAgain();
    void unknownSettingsAreRefused();
    void lostPortEndsTheSweep();
};

void LptSweepLifeTest::stopInMidVectorCompletesOnce()
{
    SimulatorSettings settings;
    settings.paced = true;
    LptBench bench(settings);
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetSpeed(2); // 2 s per vector
    bench.driver.RunSweep();
    test::nothingHappensFor(100);
    QElapsedTimer clock;
    clock.start();
    bench.driver.StopSweep(2);
    bench.driver.StopSweep(1);
    QTRY_COMPARE(bench.completes.count(), 1);
    QVERIFY(clock.elapsed() < 1'000);
    test::nothingHappensFor(20);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.vectors.count(), 0);
    QCOMPARE(bench.errors.count(), 0);
}

void LptSweepLifeTest::stopWhenIdle()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.StopSweep(2);
    QCoreApplication::processEvents();
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorCode(0), 4);
    QCOMPARE(bench.errors.at(0).at(1).toString(), QStringLiteral("No sweep is running."));
    QCOMPARE(bench.completes.count(), 0);
}

void LptSweepLifeTest::runTwiceIsHarmless()
{
    LptBench bench;
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.RunSweep();
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.count() >= 3);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    for (const QList<QVariant> &signal : bench.vectors)
        QCOMPARE(signal.at(0).value<QList<int>>().size(), 400);
}

void LptSweepLifeTest::runWhileStopping()
{
    LptBench bench;
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    for (int round = 1; round <= 20; ++round) {
        bench.driver.RunSweep();
        bench.driver.StopSweep(2);
        bench.driver.RunSweep(); // the previous sweep completes first
        QCOMPARE(bench.completes.count(), 2 * round - 1);
        const auto before = bench.vectors.count();
        QTRY_VERIFY(bench.vectors.count() > before);
        bench.driver.StopSweep(2);
        QTRY_COMPARE(bench.completes.count(), 2 * round);
    }
    QCOMPARE(bench.errors.count(), 0);
}

void LptSweepLifeTest::replanNeverShowsTheFormerPlan()
{
    LptBench bench;
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    bool high = true;
    int wrong = 0;
    int seen = 0;
    connect(&bench.driver, &LptDriver::aVettore, this, [&](const QList<int> &vector) {
        ++seen;
        for (const int count : vector)
            wrong += (count > kLimit) != high;
    });
    bench.driver.PrepareSweep(kHighHz, 0);
    bench.driver.RunSweep();
    for (int round = 0; round < 300; ++round) {
        // Lets vectors queue up for a different length of time in each round.
        QElapsedTimer clock;
        clock.start();
        while (clock.nsecsElapsed() < 20'000 * (round % 250)) {
        }
        high = !high;
        bench.driver.PrepareSweep(high ? kHighHz : kLowHz, 0);
        const int before = seen;
        if (round % 3 == 0)
            QTRY_VERIFY_WITH_TIMEOUT(seen > before, 5'000);
    }
    QTRY_VERIFY(seen > 100);
    QCOMPARE(wrong, 0);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
}

void LptSweepLifeTest::waitingVectorOfTheFormerPlanIsGone()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.PrepareSweep(kHighHz, 0);
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.driver.droppedVectors() > 3);
    QCOMPARE(bench.vectors.count(), LptBench::kWindow);
    bench.driver.PrepareSweep(kLowHz, 0);
    bench.driver.VectorsTaken(1);
    QTRY_COMPARE(bench.vectors.count(), LptBench::kWindow + 1);
    for (const int count : bench.vector(LptBench::kWindow))
        QVERIFY(count < kLimit);
}

void LptSweepLifeTest::slowProgramGetsTheNewest()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.driver.droppedVectors() > 10);
    QCOMPARE(bench.vectors.count(), LptBench::kWindow);
    bench.driver.VectorsTaken(1);
    QCOMPARE(bench.vectors.count(), LptBench::kWindow + 1);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    for (int index = 0; index < 20; ++index)
        bench.driver.VectorsTaken(1);
    QCOMPARE(bench.vectors.count(), LptBench::kWindow + 1); // nothing after aComplete
}

void LptSweepLifeTest::closedPortRefusesASweep()
{
    LptBench bench;
    bench.driver.RunSweep();
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorCode(0), code::kPort);
    QCOMPARE(bench.errors.at(0).at(1).toString(), QStringLiteral("The parallel port is not open."));
    QCOMPARE(bench.completes.count(), 1);
}

void LptSweepLifeTest::otherOperationsWithoutAPort()
{
    LptBench bench;
    bench.driver.SetFrequency(7'000'000);
    bench.driver.ResetDevice();
    bench.driver.PrepareSweep(1, 1);
    bench.driver.ClosePort();
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.driver.ReadDetector(), short{0});
    QCOMPARE(bench.errorCode(0), code::kNoAction);
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.ResetDevice();
    QVERIFY(std::fabs(bench.board->dds().output().hertz - 7e6) < 0.01);
}

void LptSweepLifeTest::closingEndsTheSweep()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.RunSweep();
    bench.driver.ClosePort();
    QCOMPARE(bench.completes.count(), 1);
    const auto vectors = bench.vectors.count();
    test::nothingHappensFor(20);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.vectors.count(), vectors);
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.count() > vectors);
}

void LptSweepLifeTest::failedOpenLeavesThePortClosed()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    QVERIFY(!bench.driver.OpenPort(888));
    QCOMPARE(bench.errorCode(0), code::kNoAction);
    bench.driver.RunSweep();
    QCOMPARE(bench.errorCode(1), code::kPort);
    QCOMPARE(bench.completes.count(), 1);
}

void LptSweepLifeTest::frequencyThatDoesNotFit()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetFrequency(10'000'000);
    bench.driver.SetFrequency(90'000'000);
    QCOMPARE(bench.errorCode(0), 5);
    QVERIFY(bench.errors.at(0).at(1).toString().contains(QStringLiteral("90000000 Hz")));
    QVERIFY(std::fabs(bench.board->dds().output().hertz - 10e6) < 0.01);

    bench.driver.PrepareSweep(79'000'000, 10'000); // above the clock frequency from point 100 on
    bench.driver.RunSweep();
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 2);
    QCOMPARE(bench.errorCode(1), 5);
    QCOMPARE(bench.vectors.count(), 0);

    bench.driver.PrepareSweep(1'000'000, 10'000);
    bench.driver.RunSweep();
    QTRY_VERIFY(!bench.vectors.isEmpty());
}

void LptSweepLifeTest::parkedFrequency()
{
    LptBench bench;
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.ResetDevice();
    QCOMPARE(bench.board->dds().output().amplitude, 0.0); // no frequency has been set yet
    bench.driver.RunSweep();
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    bench.driver.SetFrequency(kHighHz);
    QVERIFY(std::fabs(bench.board->dds().output().hertz - kHighHz) < 0.01);
    QVERIFY(bench.driver.ReadDetector() > kLimit);
    bench.driver.SetFrequency(kLowHz);
    QVERIFY(bench.driver.ReadDetector() < kLimit);
}

void LptSweepLifeTest::chipStartsByItself()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetFrequency(3'000'000);
    QVERIFY(static_cast<const Ad985xModel &>(bench.board->dds()).isSerial());
    QVERIFY(std::fabs(bench.board->dds().output().hertz - 3e6) < 0.01);
    const auto updates = bench.board->dds().updates();
    bench.driver.SetFrequency(4'000'000);
    QCOMPARE(bench.board->dds().updates(), updates + 1); // a new frequency does not restart the chip
}

void LptSweepLifeTest::changedClockStartsTheChipAgain()
{
    SimulatorSettings settings = unpacedSettings();
    settings.chip = DdsChip::Ad9951;
    settings.clockHz = 25e6;
    LptBench bench(settings);
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetDdsDevice(QStringLiteral("AD9951"));
    bench.driver.SetXtalFrequency(25e6);
    for (const short multiplier : {short{1}, short{16}, short{4}, short{1}}) {
        bench.driver.SetMultiplier(multiplier);
        bench.driver.SetFrequency(5'000'000);
        QVERIFY(std::fabs(bench.board->dds().output().hertz - 5e6) < 0.05);
    }
    QCOMPARE(bench.board->dds().violations(), 0U);
}

void LptSweepLifeTest::unknownSettingsAreRefused()
{
    LptBench bench;
    bench.driver.SetDdsDevice(QStringLiteral("AD9999"));
    bench.driver.SetAdcDevice(QStringLiteral("12bit"));
    bench.driver.SetSpeed(4);
    bench.driver.SetSpeed(-1);
    QCOMPARE(bench.errors.count(), 4);
    for (int index = 0; index < 4; ++index)
        QCOMPARE(bench.errorCode(index), code::kSetting);
}

void LptSweepLifeTest::lostPortEndsTheSweep()
{
    // A port that fails after 500 reads.
    class DyingPort : public SimulatedParallelPort
    {
    public:
        using SimulatedParallelPort::SimulatedParallelPort;
        std::uint8_t readStatus() override
        {
            if (++m_reads > 500)
                throw PortError("The port has gone.");
            return SimulatedParallelPort::readStatus();
        }

    private:
        int m_reads = 0;
    };
    LptDriver driver([](int) { return std::make_unique<DyingPort>(unpacedSettings()); });
    QSignalSpy errors(&driver, &LptDriver::aErrore);
    QSignalSpy completes(&driver, &LptDriver::aComplete);
    QVERIFY(driver.OpenPort(0));
    driver.RunSweep();
    QTRY_COMPARE(completes.count(), 1);
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.at(0).at(0).toInt(), code::kPort);
    QCOMPARE(driver.ReadDetector(), short{0});
    QCOMPARE(errors.count(), 2);
}

QTEST_GUILESS_MAIN(LptSweepLifeTest)
#include "lpt_sweep_life.moc"
