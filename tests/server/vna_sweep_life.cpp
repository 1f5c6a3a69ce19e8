// SPDX-License-Identifier: MIT
// Tests how MiniVNA sweeps start and stop: each sends one aComplete, and the driver sends no command while a reply is
// outstanding.
#include "tests/server/vna_bench.h"
#include "tests/support/quiet_time.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;

class VnaSweepLifeTest : public QObject
{
    Q_OBJECT

private slots:
    void startUp();
    void wrongPort();
    void runWithoutAPort();
    void stopInMidSweep();
    void stopWhileTheLineStandsStill();
    void stopWhenIdleSaysNothing();
    void runAgainWhileStopping();
    void stopDoesNotEndTheNextRun();
    void everyRunAnnouncesItsPlan();
    void runTwiceIsOneSweep();
    void frequencyWhileSweeping();
    void modeZeroSwitchesOff();
    void newPlanLetsNoOldVectorThrough();
    void newModeLetsNoOldVectorThrough();
    void closeSwitchesOff();
    void closeSwitchesOffAfterALostByte();
    void slowProgramGetsTheNewest();
    void unknownValues();
    void frequencyThatDoesNotFit();
    void rangeIsNotedOnce();
    void keepsTheLineBusy();
};

namespace {

const QByteArray kOff = "0\r0\r1\r0\r";
const QByteArray kTenMegahertz = "0\r107374182\r1\r0\r";

// Starts a sweep and halts the line halfway through the reply.
void holdInMidSweep(VnaBench &bench)
{
    const quint64 half = bench.link->passed() + 800;
    bench.link->holdAfter(half);
    bench.start(1'000'000, 22'500);
    QTRY_COMPARE(bench.link->passed(), half);
    QVERIFY(bench.board.isReplying());
}

} // namespace

void VnaSweepLifeTest::startUp()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.driver.SetMode(3);
    bench.driver.SetFrequency(10'000'000);
    QTRY_VERIFY(bench.board.generatorHz() > 0.0);
    QCOMPARE(bench.link->written(), QList<QByteArray>{kTenMegahertz});
    QVERIFY(std::abs(bench.board.generatorHz() - 10e6) < 0.05);
    QCOMPARE(bench.errors.count(), 0);
}

void VnaSweepLifeTest::wrongPort()
{
    VnaBench bench;
    QVERIFY(!bench.driver.OpenPort(7, QStringLiteral("115200,N,8,1")));
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
}

void VnaSweepLifeTest::runWithoutAPort()
{
    VnaBench bench;
    bench.start(1'000'000, 22'500);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
    QCOMPARE(bench.completes.count(), 1);
    bench.driver.SetFrequency(10'000'000);
    QVERIFY(bench.open());
    QTRY_COMPARE(bench.link->written(), QList<QByteArray>{kTenMegahertz});
}

void VnaSweepLifeTest::stopInMidSweep()
{
    VnaBench bench;
    QVERIFY(bench.open());
    holdInMidSweep(bench);
    const auto before = bench.vectors.count();
    const auto written = bench.link->written().size();
    bench.driver.StopSweep(2);
    bench.driver.StopSweep(2);
    QCOMPARE(bench.completes.count(), 0);
    bench.link->release();
    QTRY_COMPARE(bench.completes.count(), 1);
    test::nothingHappensFor(50);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.vectors.count(), before);
    QCOMPARE(bench.link->written().size(), written);
    QCOMPARE(bench.errors.count(), 0);
    // The next sweep is complete.
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.vectors.count() > before);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
}

void VnaSweepLifeTest::stopWhileTheLineStandsStill()
{
    VnaBench bench;
    QVERIFY(bench.open());
    holdInMidSweep(bench);
    QElapsedTimer clock;
    clock.start();
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QVERIFY(clock.elapsed() < 400);
    // The next sweep waits for the rest of the old reply.
    const auto written = bench.link->written().size();
    bench.start(2'000'000, 22'500);
    test::nothingHappensFor(100);
    QCOMPARE(bench.link->written().size(), written);
    const auto before = bench.vectors.count();
    bench.link->release();
    QTRY_VERIFY(bench.vectors.count() > before);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
    QCOMPARE(bench.link->interruptions(), 0);
    QCOMPARE(bench.errors.count(), 0);
}

void VnaSweepLifeTest::stopWhenIdleSaysNothing()
{
    VnaBench bench;
    bench.driver.StopSweep(2);
    QVERIFY(bench.open());
    bench.driver.StopSweep(1);
    test::nothingHappensFor(20);
    QCOMPARE(bench.completes.count(), 0);
    QCOMPARE(bench.errors.count(), 0);
}

void VnaSweepLifeTest::runAgainWhileStopping()
{
    VnaBench bench;
    QVERIFY(bench.open());
    holdInMidSweep(bench);
    const auto before = bench.vectors.count();
    bench.driver.StopSweep(1);
    bench.board.recordSamples(10 * VnaBench::kPoints);
    bench.start(5'000'000, 3'125);
    QCOMPARE(bench.completes.count(), 1);
    bench.link->release();
    QTRY_VERIFY(bench.vectors.count() > before);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 2);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
    // The first vector is a complete sweep of the new plan.
    const auto &made = bench.board.samples();
    const auto first = std::find_if(made.begin(), made.end(),
                                    [](const VnaBoardSample &sample) { return std::abs(sample.hertz - 5e6) < 0.1; });
    QVERIFY(made.end() - first >= VnaBench::kPoints);
    for (int point = 0; point < VnaBench::kPoints; ++point)
        QCOMPARE(bench.vector(before).at(point), first[point].magnitude);
}

void VnaSweepLifeTest::stopDoesNotEndTheNextRun()
{
    VnaBench bench;
    QVERIFY(bench.open());
    holdInMidSweep(bench);
    bench.driver.StopSweep(2);
    bench.link->release();
    QTRY_COMPARE(bench.completes.count(), 1);
    bench.start(1'000'000, 22'500);
    test::nothingHappensFor(300); // the stop would have waited 150 ms for the reply
    QCOMPARE(bench.completes.count(), 1);
    const auto before = bench.vectors.count();
    QTRY_VERIFY(bench.vectors.count() > before);
}

void VnaSweepLifeTest::everyRunAnnouncesItsPlan()
{
    VnaBench bench;
    QSignalSpy plans(&bench.driver, &VnaDriver::PlanOfVectors);
    QVERIFY(bench.open());
    for (int run = 1; run <= 3; ++run) {
        const auto before = bench.vectors.count();
        bench.start(1'000'000, 22'500);
        QTRY_VERIFY(bench.vectors.count() > before);
        QCOMPARE(plans.count(), run);
        QCOMPARE(plans.last(), (QVariantList{1'000'000, 22'500, QVariant::fromValue(short{3})}));
        bench.driver.StopSweep(2);
        QTRY_COMPARE(bench.completes.count(), run);
    }
}

void VnaSweepLifeTest::runTwiceIsOneSweep()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.count() >= 2);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    test::nothingHappensFor(20);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
}

void VnaSweepLifeTest::frequencyWhileSweeping()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.vectors.count() >= 1);
    for (int round = 0; round < 100; ++round)
        bench.driver.SetFrequency(9'000'000 + round);
    bench.driver.SetFrequency(10'000'000);
    QTRY_VERIFY(bench.vectors.count() >= 4);
    for (const QByteArray &command : bench.link->written().mid(1)) // skips the line check
        QVERIFY(command.contains("\r400\r"));
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.link->written().last(), kTenMegahertz);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
    QCOMPARE(bench.link->interruptions(), 0);
}

void VnaSweepLifeTest::modeZeroSwitchesOff()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.driver.SetFrequency(10'000'000);
    QTRY_VERIFY(bench.board.generatorHz() > 0.0);
    bench.driver.SetMode(0);
    QTRY_COMPARE(bench.board.generatorHz(), 0.0);
    QCOMPARE(bench.link->written().last(), kOff);
    // The program parks the generator with these calls.
    bench.driver.SetMode(0);
    bench.driver.SetFrequency(10'000'000);
    bench.driver.SetMode(3);
    QTRY_VERIFY(bench.board.generatorHz() > 0.0);
    QCOMPARE(bench.link->interruptions(), 0);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
}

void VnaSweepLifeTest::newPlanLetsNoOldVectorThrough()
{
    VnaBench bench(vnaSettings(DeviceKind::Crystal));
    QVERIFY(bench.open());
    bench.start(9'000'000 - 100 * 250, 250);
    for (int round = 0; round < 20; ++round) {
        const int row = 100 + 10 * round;
        bench.driver.PrepareSweep(9'000'000 - row * 250, 250, VnaBench::kPoints);
        const auto before = bench.vectors.count();
        QTRY_VERIFY(bench.vectors.count() >= before + 2);
        for (auto index = before; index < bench.vectors.count(); ++index) {
            const QList<int> samples = bench.vector(index);
            QCOMPARE(static_cast<int>(std::min_element(samples.begin(), samples.end()) - samples.begin()), row);
        }
    }
}

void VnaSweepLifeTest::newModeLetsNoOldVectorThrough()
{
    VnaBench bench(vnaSettings(DeviceKind::Through));
    QVERIFY(bench.open());
    bench.start(1'000'000, 1'000);
    for (int round = 0; round < 20; ++round) {
        // A cable yields 1024 - 410 counts in transmission and almost 0 in reflection.
        const bool transmission = round % 2 != 0;
        bench.driver.SetMode(transmission ? 3 : 2);
        const auto before = bench.vectors.count();
        QTRY_VERIFY(bench.vectors.count() >= before + 2);
        for (auto index = before; index < bench.vectors.count(); ++index) {
            for (const int count : bench.vector(index))
                QVERIFY(transmission ? count > 600 && count < 630 : count < 10);
        }
    }
}

void VnaSweepLifeTest::closeSwitchesOff()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.driver.SetFrequency(10'000'000);
    QTRY_VERIFY(bench.board.generatorHz() > 0.0);
    bench.driver.ClosePort();
    QCOMPARE(bench.board.generatorHz(), 0.0);
    QCOMPARE(bench.completes.count(), 0);

    QVERIFY(bench.open());
    holdInMidSweep(bench);
    bench.link->release();
    bench.driver.ClosePort();
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.board.generatorHz(), 0.0);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
}

// The reply never becomes complete, so the line stays busy for more than a second.
void VnaSweepLifeTest::closeSwitchesOffAfterALostByte()
{
    VnaBench bench(vnaSettings(),
                   [](quint64 index, char byte) { return index == 500 ? QByteArray() : QByteArray(1, byte); });
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.link->passed() > 500);
    QTRY_VERIFY(!bench.board.isReplying());
    QVERIFY(bench.board.generatorHz() > 0.0);
    bench.driver.ClosePort();
    QCOMPARE(bench.board.generatorHz(), 0.0);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
}

void VnaSweepLifeTest::slowProgramGetsTheNewest()
{
    VnaBench bench;
    QObject::disconnect(&bench.driver, &VnaDriver::aVettore, &bench.driver, nullptr);
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.driver.droppedVectors() >= 20);
    QCOMPARE(bench.vectors.count(), VnaBench::kWindow);
    bench.driver.VectorsTaken(1);
    QCOMPARE(bench.vectors.count(), VnaBench::kWindow + 1);
}

void VnaSweepLifeTest::unknownValues()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.driver.SetMode(4);
    bench.driver.SetMode(-1);
    bench.driver.PrepareSweep(1'000'000, 1'000, 100);
    QCOMPARE(bench.errors.count(), 3);
    QCOMPARE(bench.errorsWith(code::kSetting), 3);
}

void VnaSweepLifeTest::frequencyThatDoesNotFit()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.driver.SetFrequency(401'000'000);
    QCOMPARE(bench.errorsWith(code::kFrequency), 1);
    bench.start(399'999'000, 1'000);
    QCOMPARE(bench.errorsWith(code::kFrequency), 2);
    QCOMPARE(bench.completes.count(), 1);
    QVERIFY(bench.link->written().isEmpty());
}

void VnaSweepLifeTest::rangeIsNotedOnce()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.start(170'000'000, 100'000);
    QTRY_VERIFY(bench.vectors.count() >= 3);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kNoAction), 1);
}

void VnaSweepLifeTest::keepsTheLineBusy()
{
    constexpr int kSweeps = 20;
    VnaBench bench;
    QVERIFY(bench.open());
    bench.link->setPaced();
    bench.start(1'000'000, 22'500);
    QElapsedTimer clock; // starts at the first vector
    QEventLoop loop;
    connect(&bench.driver, &VnaDriver::aVettore, &loop, [&bench, &clock, &loop] {
        if (!clock.isValid())
            clock.start();
        if (bench.vectors.count() > kSweeps)
            loop.quit();
    });
    QTimer::singleShot(60'000, &loop, &QEventLoop::quit);
    loop.exec();
    QVERIFY(bench.vectors.count() > kSweeps);
    const double rate = kSweeps / (static_cast<double>(clock.nsecsElapsed()) * 1e-9);
    const double limit = 11'520.0 / static_cast<double>(1'600 + bench.link->written().last().size());
    qInfo("%.3f sweeps/s, the line allows %.3f: %.1f %%", rate, limit, 100.0 * rate / limit);
    QVERIFY(rate >= 0.5 * limit); // allows for a busy machine
    QVERIFY(rate <= 1.01 * limit);
    QCOMPARE(bench.errors.count(), 0);
}

QTEST_GUILESS_MAIN(VnaSweepLifeTest)
#include "vna_sweep_life.moc"
