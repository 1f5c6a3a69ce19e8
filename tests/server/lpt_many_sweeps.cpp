// SPDX-License-Identifier: MIT
// Guards 200 sweeps in a row, every frequency and every row of them, and that a sweep's time goes into port accesses
// and prescribed waits.
#include "tests/server/lpt_bench.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;

namespace {

constexpr int kSweeps = 200;
constexpr std::size_t kConversionsInSweep = 2 * kSweepPoints;

// A port without a board: counts what it is asked for, so that the rest of the time is the driver's.
class CountingPort : public ParallelPort
{
public:
    void writeData(std::uint8_t) override { ++accesses; }
    void writeControl(std::uint8_t) override { ++accesses; }
    std::uint8_t readStatus() override
    {
        ++accesses;
        return 0x40;
    }
    void wait(std::chrono::nanoseconds duration) override { waited += duration; }

    std::uint64_t accesses = 0;
    std::chrono::nanoseconds waited{};
};

} // namespace

class LptManySweepsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFrequencyAndEveryRow();
    void timeGoesIntoThePort_data();
    void timeGoesIntoThePort();
};

void LptManySweepsTest::everyFrequencyAndEveryRow()
{
    constexpr int kStart = 9'000'000 - 137 * 250;
    constexpr int kStep = 250;
    SimulatorSettings settings = unpacedSettings();
    settings.device = DeviceKind::Crystal;
    LptBench bench(settings);
    bench.recordAtMost = 3 * kSweeps * kConversionsInSweep; // some vectors may come too fast for this thread
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

    // Each vector is one of the board's sweeps, whole and in its order; the noise makes no two of them equal.
    std::size_t sweep = 0;
    for (int index = 0; index < kSweeps; ++index) {
        const QList<int> vector = bench.vector(index);
        QCOMPARE(vector.size(), kSweepPoints);
        const auto isSweep = [&](std::size_t candidate) {
            for (int point = 0; point < kSweepPoints; ++point) {
                if (records[candidate * kConversionsInSweep + 2 * static_cast<std::size_t>(point)].count !=
                    vector.at(point))
                    return false;
            }
            return true;
        };
        while (sweep < sweeps && !isSweep(sweep))
            ++sweep;
        QVERIFY2(sweep < sweeps, qPrintable(QStringLiteral("vector %1 is no sweep of the board").arg(index)));
        ++sweep;
        QCOMPARE(static_cast<int>(std::max_element(vector.begin(), vector.end()) - vector.begin()), 137);
    }
}

void LptManySweepsTest::timeGoesIntoThePort_data()
{
    QTest::addColumn<bool>("byteWide");
    QTest::newRow("serial loading") << false;
    QTest::newRow("byte-wide loading") << true;
}

// At 1.25 us an access. What the driver itself takes is measured on this machine with a port that takes no time.
void LptManySweepsTest::timeGoesIntoThePort()
{
    QFETCH(bool, byteWide);
    constexpr int kRounds = 20;
    constexpr double kAccessMs = 1.25e-3;
    BoardWiring wiring;
    if (byteWide)
        wiring = {kByteWideLptWiring, DdsLoading::Bytes};

    auto counting = std::make_unique<CountingPort>();
    const CountingPort &port = *counting;
    LptBoard board;
    board.attach({std::move(counting), wiring});
    board.measure(1'000'000);
    const auto accessesBefore = port.accesses;
    const auto waitedBefore = port.waited;
    double fastest = 1e9; // another process on this core is not the driver's time
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer clock;
        clock.start();
        for (int point = 0; point < kSweepPoints; ++point)
            board.measure(1'000'000 + 22'557 * point);
        fastest = std::min(fastest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    const double accessMs = kAccessMs * static_cast<double>(port.accesses - accessesBefore) / kRounds;
    const double waitMs = std::chrono::duration<double, std::milli>(port.waited - waitedBefore).count() / kRounds;

    auto simulated = std::make_unique<SimulatedParallelPort>(unpacedSettings(), wiring);
    const SimulatedParallelPort &onBoard = *simulated;
    LptBoard simulatedBoard;
    simulatedBoard.attach({std::move(simulated), wiring});
    simulatedBoard.measure(1'000'000);
    const auto before = onBoard.boardTime();
    const auto boardAccesses = onBoard.accesses();
    for (int point = 0; point < kSweepPoints; ++point)
        simulatedBoard.measure(1'000'000 + 22'557 * point);
    const double boardMs = std::chrono::duration<double, std::milli>(onBoard.boardTime() - before).count();

    const double share = boardMs / (boardMs + fastest);
    qInfo("sweep: %.1f ms of accesses (%llu) + %.1f ms of waits; the driver itself %.2f ms: share %.2f %%", accessMs,
          static_cast<unsigned long long>(onBoard.accesses() - boardAccesses), waitMs, fastest, 100.0 * share);
    QVERIFY(std::fabs(accessMs + waitMs - boardMs) < 0.01 * boardMs);
    QVERIFY(share >= 0.9);
}

QTEST_GUILESS_MAIN(LptManySweepsTest)
#include "lpt_many_sweeps.moc"
