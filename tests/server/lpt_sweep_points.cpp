// SPDX-License-Identifier: MIT
// Tests that the generator outputs each of the 400 planned frequencies and that sample k was measured at frequency k.
#include "tests/server/lpt_bench.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;

namespace {

// Sweeps with this plan until at least one vector has arrived.
void sweepOnce(LptBench &bench, int start, int step)
{
    bench.takeVectors();
    bench.driver.PrepareSweep(start, step);
    bench.driver.RunSweep();
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
}

} // namespace

class LptSweepPointsTest : public QObject
{
    Q_OBJECT

private slots:
    void frequencies_data();
    void frequencies();
    void resonanceLandsInItsRow_data();
    void resonanceLandsInItsRow();
    void offsetShiftsEveryPoint();
    void speedsDiffer();
    void otherCommandsBetweenPoints();
};

void LptSweepPointsTest::frequencies_data()
{
    QTest::addColumn<QString>("chip");
    QTest::addColumn<double>("xtal");
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<double>("systemClock");
    QTest::newRow("AD9850 80 MHz") << "AD9850" << 80e6 << 1 << 80e6;
    QTest::newRow("AD9850 125 MHz") << "AD9850" << 125e6 << 1 << 125e6;
    QTest::newRow("AD9851 x1") << "AD9851" << 30e6 << 1 << 30e6;
    QTest::newRow("AD9851 x6") << "AD9851" << 30e6 << 6 << 180e6;
    QTest::newRow("AD9951 bypass") << "AD9951" << 400e6 << 1 << 400e6;
    for (int multiplier = 4; multiplier <= 20; ++multiplier)
        QTest::addRow("AD9951 x%d", multiplier) << "AD9951" << 20e6 << multiplier << 20e6 * multiplier;
}

void LptSweepPointsTest::frequencies()
{
    QFETCH(QString, chip);
    QFETCH(double, xtal);
    QFETCH(int, multiplier);
    QFETCH(double, systemClock);
    SimulatorSettings settings = unpacedSettings();
    settings.chip = ddsChipFromName(chip).value();
    settings.clockHz = xtal;
    LptBench bench(settings);
    bench.recordAtMost = 2 * LptBench::kPoints;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetDdsDevice(chip);
    bench.driver.SetXtalFrequency(xtal);
    bench.driver.SetMultiplier(static_cast<short>(multiplier));
    constexpr int kStart = 1'000'000;
    constexpr int kStep = 22'557;
    sweepOnce(bench, kStart, kStep);

    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.board->dds().violations(), 0U);
    QCOMPARE(bench.board->adc().earlyFrames(), std::uint64_t{0});
    QCOMPARE(bench.board->conversions().size(), std::size_t{2 * LptBench::kPoints});
    QCOMPARE(bench.vector(0).size(), LptBench::kPoints);
    const double halfResolution = systemClock / 8'589'934'592.0;
    for (int point = 0; point < LptBench::kPoints; ++point) {
        // A point's first frame samples the input. Its second frame returns the sample and starts a conversion that the
        // driver never reads.
        const ConversionRecord &record = bench.board->conversions()[static_cast<std::size_t>(2 * point)];
        const double planned = kStart + static_cast<double>(point) * kStep;
        const double made = record.hertz;
        QVERIFY2(std::fabs(made - planned) <= halfResolution * 1.000001,
                 qPrintable(QStringLiteral("point %1: %2 Hz").arg(point).arg(made, 0, 'f', 6)));
        QCOMPARE(bench.vector(0).at(point), record.count);
    }
}

void LptSweepPointsTest::resonanceLandsInItsRow_data()
{
    QTest::addColumn<QString>("converter");
    QTest::addColumn<int>("counts");
    QTest::newRow("8 bit") << "8bit" << 256;
    QTest::newRow("10 bit") << "10bit" << 1024;
}

void LptSweepPointsTest::resonanceLandsInItsRow()
{
    QFETCH(QString, converter);
    QFETCH(int, counts);
    SimulatorSettings settings = unpacedSettings();
    settings.device = DeviceKind::Crystal;
    settings.adc = serialAdcFromName(converter).value();
    LptBench bench(settings);
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetAdcDevice(converter);
    sweepOnce(bench, 9'000'000 - 137 * 250, 250);

    const QList<int> samples = bench.vector(0);
    const auto peak = std::max_element(samples.begin(), samples.end());
    QCOMPARE(static_cast<int>(peak - samples.begin()), 137);
    // The crystal passes 100/120 of 1 V, and the reference is 2.5 V. The generator's roll-off costs a few per cent.
    const double expected = 0.4 * counts * 100.0 / 120.0;
    QVERIFY(*peak > 0.95 * expected && *peak < 1.01 * expected);
    QVERIFY(samples.first() < counts / 20);
}

void LptSweepPointsTest::offsetShiftsEveryPoint()
{
    LptBench bench;
    bench.recordAtMost = 2 * LptBench::kPoints;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetOffset(-123.5);
    sweepOnce(bench, 5'000'000, 1'000);
    for (std::size_t point = 0; point < LptBench::kPoints; ++point) {
        const double wanted = 5'000'000.0 + 1'000.0 * static_cast<double>(point) - 123.5;
        QVERIFY(std::fabs(bench.board->conversions()[2 * point].hertz - wanted) < 0.0094);
    }
}

void LptSweepPointsTest::speedsDiffer()
{
    const auto sweepTime = [](SweepSpeed speed) {
        auto port = std::make_unique<SimulatedParallelPort>(unpacedSettings());
        const SimulatedParallelPort &simulated = *port;
        LptBoard board;
        board.attach(std::move(port));
        board.setSpeed(speed);
        board.measure(1'000'000);
        const auto before = simulated.boardTime();
        for (int point = 0; point < LptBench::kPoints; ++point)
            board.measure(1'000'000 + point);
        return std::chrono::duration<double, std::milli>(simulated.boardTime() - before).count();
    };
    const double standard = sweepTime(SweepSpeed::Standard);
    const double slow = sweepTime(SweepSpeed::Slow);
    const double verySlow = sweepTime(SweepSpeed::VerySlow);
    const double calibration = sweepTime(SweepSpeed::Calibration);
    qInfo("board time of a sweep: %.1f, %.1f, %.1f, %.1f ms", standard, slow, verySlow, calibration);
    QVERIFY(standard >= 100.0 && standard <= 120.0);
    QVERIFY(slow >= 3.5 * standard && slow <= 4.5 * standard);
    QVERIFY(verySlow >= 1'900.0 && verySlow <= 2'100.0);
    QVERIFY(calibration > verySlow);
}

void LptSweepPointsTest::otherCommandsBetweenPoints()
{
    SimulatorSettings settings = unpacedSettings();
    settings.device = DeviceKind::Through;
    LptBench bench(settings);
    QVERIFY(bench.driver.OpenPort(0));
    bench.takeVectors();
    bench.driver.PrepareSweep(1'000'000, 1'000);
    bench.driver.RunSweep();
    for (int round = 0; round < 200; ++round) {
        bench.driver.SetAux(static_cast<uchar>(round), 1);
        bench.driver.SetFrequency(2'000'000 + round);
        QVERIFY(bench.driver.WriteI2c(0x50, 0xA9, static_cast<uchar>(round)));
        bench.driver.SetSpeed(static_cast<short>(round % 3));
        const int count = bench.driver.ReadDetector();
        QVERIFY(count > 384 && count < 424);
    }
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.board->dds().violations(), 0U);
    QCOMPARE(bench.board->adc().earlyFrames(), std::uint64_t{0});
    QCOMPARE(bench.board->latches().aux1(), std::uint8_t{199});
    QCOMPARE(bench.board->pot().wiper(0), std::uint8_t{199});
    for (const int count : bench.vector(0))
        QVERIFY(count > 384 && count < 424);
}

QTEST_GUILESS_MAIN(LptSweepPointsTest)
#include "lpt_sweep_points.moc"
