// SPDX-License-Identifier: MIT
// Tests that the MiniVNA outputs each of the 400 planned frequencies and that sample k was measured at frequency k.
#include "tests/server/vna_bench.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;

namespace {

constexpr double kUnitHz = 400e6 / 4'294'967'296.0;

void sweepOnce(VnaBench &bench, int start, int step, short mode)
{
    QVERIFY(bench.open());
    bench.start(start, step, mode);
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.vector(0).size(), VnaBench::kPoints);
}

} // namespace

class VnaSweepPointsTest : public QObject
{
    Q_OBJECT

private slots:
    void twoHundredSweeps_data();
    void twoHundredSweeps();
    void resonanceLandsInItsRow_data();
    void resonanceLandsInItsRow();
    void imageOfTheResonance();
    void descendingSweep();
    void offsetShiftsEveryPoint();
    void modesChooseTheValue();
    void parallelBoardsCounts();
};

void VnaSweepPointsTest::twoHundredSweeps_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("step");
    QTest::addColumn<double>("units"); // allowed error at the last sample, in tuning-word units
    // 390,625 Hz is exactly 4,194,304 units.
    QTest::newRow("whole range, exact step") << 100'000 << 390'625 << 0.5;
    QTest::newRow("rounded step") << 1'000'000 << 22'557 << 200.0;
    QTest::newRow("narrow, rounded step") << 14'000'000 << 875 << 200.0;
}

void VnaSweepPointsTest::twoHundredSweeps()
{
    QFETCH(int, start);
    QFETCH(int, step);
    QFETCH(double, units);
    constexpr int kSweeps = 200;
    VnaBench bench;
    bench.board.recordSamples(kSweeps * VnaBench::kPoints);
    QVERIFY(bench.open());
    bench.start(start, step);
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= kSweeps, 30'000);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.driver.droppedVectors(), std::uint64_t{0});
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});

    const double startWord = std::round(start / kUnitHz);
    const double stepWord = std::round(step / kUnitHz);
    for (int sweep = 0; sweep < kSweeps; ++sweep) {
        const QList<int> vector = bench.vector(sweep);
        QCOMPARE(vector.size(), VnaBench::kPoints);
        for (int point = 0; point < VnaBench::kPoints; ++point) {
            const std::size_t index = static_cast<std::size_t>(sweep * VnaBench::kPoints + point);
            const VnaBoardSample &made = bench.board.samples()[index];
            QCOMPARE(static_cast<double>(made.word), startWord + point * stepWord);
            const double planned = start + static_cast<double>(point) * step;
            QVERIFY(std::fabs(made.hertz - planned) <= std::min(units, 0.5 * (point + 1)) * kUnitHz * 1.000001);
            QCOMPARE(vector.at(point), made.magnitude);
        }
    }
}

void VnaSweepPointsTest::resonanceLandsInItsRow_data()
{
    QTest::addColumn<int>("row");
    for (const int row : {0, 1, 137, 200, 398, 399})
        QTest::addRow("%d", row) << row;
}

void VnaSweepPointsTest::resonanceLandsInItsRow()
{
    QFETCH(int, row);
    VnaBench bench(vnaSettings(DeviceKind::Crystal));
    sweepOnce(bench, 9'000'000 - row * 250, 250, 3);
    const QList<int> samples = bench.vector(0);
    // The program shows 1024 - count, so the resonance is the smallest count.
    const auto peak = std::min_element(samples.begin(), samples.end());
    QCOMPARE(static_cast<int>(peak - samples.begin()), row);
    const double shown = 1024 - *peak;
    const double expected = 0.4 * 1024 * 100.0 / 120.0;
    QVERIFY(shown > 0.98 * expected && shown < 1.02 * expected);
}

// Near 400 MHz - 9 MHz the words are valid, but the generator outputs its image. The driver remarks on this once.
void VnaSweepPointsTest::imageOfTheResonance()
{
    VnaBench bench(vnaSettings(DeviceKind::Crystal));
    QVERIFY(bench.open());
    bench.start(391'000'000 - 137 * 250, 250);
    QTRY_VERIFY(bench.vectors.count() >= 3);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    const QList<int> samples = bench.vector(2);
    QCOMPARE(static_cast<int>(std::min_element(samples.begin(), samples.end()) - samples.begin()), 137);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kNoAction), 1);
}

void VnaSweepPointsTest::descendingSweep()
{
    VnaBench bench(vnaSettings(DeviceKind::Crystal));
    sweepOnce(bench, 9'000'000 + 137 * 250, -250, 3);
    const QList<int> samples = bench.vector(0);
    QCOMPARE(static_cast<int>(std::min_element(samples.begin(), samples.end()) - samples.begin()), 137);
    QVERIFY(!bench.link->written().first().contains('-'));
}

void VnaSweepPointsTest::offsetShiftsEveryPoint()
{
    VnaBench bench;
    bench.board.recordSamples(VnaBench::kPoints);
    bench.driver.SetOffset(-123.5);
    sweepOnce(bench, 5'000'000, 390'625, 3);
    for (std::size_t point = 0; point < VnaBench::kPoints; ++point) {
        const double wanted = 5'000'000.0 + 390'625.0 * static_cast<double>(point) - 123.5;
        QVERIFY(std::fabs(bench.board.samples()[point].hertz - wanted) <= 0.5 * kUnitHz * 1.000001);
    }
}

void VnaSweepPointsTest::modesChooseTheValue()
{
    for (const short mode : {short{1}, short{2}, short{3}}) {
        VnaBench bench;
        bench.board.recordSamples(VnaBench::kPoints);
        sweepOnce(bench, 1'000'000, 22'500, mode);
        QVERIFY(bench.link->written().first().startsWith(mode == 3 ? "1\r" : "0\r"));
        const QList<int> vector = bench.vector(0);
        for (int point = 0; point < VnaBench::kPoints; ++point) {
            const VnaBoardSample &made = bench.board.samples()[static_cast<std::size_t>(point)];
            QVERIFY(made.phase != made.magnitude);
            QCOMPARE(vector.at(point), mode == 1 ? made.phase : made.magnitude);
        }
    }
}

// A cable yields the same voltage as on the parallel-port board: 1 V, with a 2.5 V reference.
void VnaSweepPointsTest::parallelBoardsCounts()
{
    VnaBench bench(vnaSettings(DeviceKind::Through));
    sweepOnce(bench, 1'000'000, 1'000, 3);
    for (const int count : bench.vector(0)) {
        const int shown = 1024 - count;
        QVERIFY2(shown >= 406 && shown <= 413, qPrintable(QString::number(shown)));
    }
}

QTEST_GUILESS_MAIN(VnaSweepPointsTest)
#include "vna_sweep_points.moc"
