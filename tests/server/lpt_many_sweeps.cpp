// SPDX-License-Identifier: MIT
// Checks every frequency and every row of 200 consecutive sweeps.
#include "tests/server/lpt_bench.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;

namespace {

constexpr int kSweeps = 200;
constexpr std::size_t kConversionsInSweep = 2 * LptBench::kPoints;

} // namespace

class LptManySweepsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFrequencyAndEveryRow();
};

void LptManySweepsTest::everyFrequencyAndEveryRow()
{
    constexpr int kStart = 9'000'000 - 137 * 250;
    constexpr int kStep = 250;
    SimulatorSettings settings = unpacedSettings();
    settings.device = DeviceKind::Crystal;
    LptBench bench(settings);
    bench.recordAtMost = 3 * kSweeps * kConversionsInSweep; // the driver may discard vectors if this thread is slow
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.PrepareSweep(kStart, kStep);
    bench.driver.RunSweep();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= kSweeps, 120'000);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.board->dds().violations(), 0U);
    QCOMPARE(bench.board->adc().earlyFrames(), std::uint64_t{0});

    const std::vector<ConversionRecord> &records = bench.board->conversions();
    const std::size_t sweeps = std::min(records.size() / kConversionsInSweep, std::size_t{3 * kSweeps});
    QVERIFY(sweeps >= kSweeps);
    double worst = 0.0;
    for (std::size_t index = 0; index < sweeps * kConversionsInSweep; index += 2) {
        const double planned = kStart + kStep * static_cast<double>(index % kConversionsInSweep / 2);
        worst = std::max(worst, std::fabs(records[index].hertz - planned));
    }
    constexpr double kHalfResolution = 80e6 / 8'589'934'592.0;
    qInfo("%zu sweeps, worst error %.6f Hz of %.6f allowed", sweeps, worst, kHalfResolution);
    QVERIFY(worst <= kHalfResolution * 1.000001);

    // Each vector equals one of the board's sweeps, in order. The noise makes every sweep different.
    std::size_t sweep = 0;
    for (int index = 0; index < kSweeps; ++index) {
        const QList<int> vector = bench.vector(index);
        QCOMPARE(vector.size(), LptBench::kPoints);
        const auto isSweep = [&](std::size_t candidate) {
            for (int point = 0; point < LptBench::kPoints; ++point) {
                if (records[candidate * kConversionsInSweep + 2 * static_cast<std::size_t>(point)].count !=
                    vector.at(point))
                    return false;
            }
            return true;
        };
        while (sweep < sweeps && !isSweep(sweep))
            ++sweep;
        QVERIFY2(sweep < sweeps, qPrintable(QStringLiteral("vector %1 is not a sweep of the board").arg(index)));
        ++sweep;
        QCOMPARE(static_cast<int>(std::max_element(vector.begin(), vector.end()) - vector.begin()), 137);
    }
}

QTEST_GUILESS_MAIN(LptManySweepsTest)
#include "lpt_many_sweeps.moc"
