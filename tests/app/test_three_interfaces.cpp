// SPDX-License-Identifier: MIT
// The same simulated device, a crystal with one sharp resonance, on each of the three simulated boards.
#include "tests/support/crystal_sweep.h"
#include "tests/support/interface_rows.h"
#include "tests/support/window_bench.h"

#include <QSet>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {
constexpr int kSweeps = 200;
} // namespace

class TestThreeInterfaces : public QObject
{
    Q_OBJECT

private slots:
    void theResonanceStandsInTheSameRow_data() { test::addInterfaceRows(); }
    void theResonanceStandsInTheSameRow()
    {
        QFETCH(int, interfaceType);
        WindowBench bench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                          test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
        QVERIFY(bench.started);
        QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
        int sweeps = 0;
        QSet<int> peaks;
        connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] {
            if (bench.table()->text(200, SweepTable::SampleColumn) == QStringLiteral("0"))
                return;
            ++sweeps;
            peaks.insert(test::peakRow(*bench.table()));
        });
        bench.click("cmdStart");
        QTRY_VERIFY_WITH_TIMEOUT(sweeps >= kSweeps, 60000);
        bench.click("cmdStop");
        QTRY_VERIFY(bench.isShown("cmdStart"));
        QCOMPARE(peaks, QSet<int>{test::kCrystalRow});
        QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
        // The next sweep works normally.
        const int before = sweeps;
        bench.click("cmdStart");
        QTRY_VERIFY_WITH_TIMEOUT(sweeps > before, 10000);
    }

    void aRangeMadeTooSmallIsCorrectedInTheSweep_data() { test::addInterfaceRows(); }

    // The sweep continues with the range that the message names.
    void aRangeMadeTooSmallIsCorrectedInTheSweep()
    {
        QFETCH(int, interfaceType);
        WindowBench bench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                          test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
        QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
        bench.click("cmdStart");
        QTRY_VERIFY_WITH_TIMEOUT(bench.table()->text(400, SweepTable::SampleColumn) != u"0", 10000);
        bench.type("txtStop", QStringLiteral("8950100"));
        QTRY_COMPARE_WITH_TIMEOUT(bench.desktop.boxes.size(), 1, 3000);
        QVERIFY2(bench.desktop.lastText().startsWith(QStringLiteral("Minimum sweeping range is 400 Hz.\r")),
                 qPrintable(bench.desktop.lastText()));
        QCOMPARE(bench.desktop.beeps, 1);
        QCOMPARE(bench.configuration.startFreq, 8950000);
        QCOMPARE(bench.configuration.stopFreq, 8950400);
        QCOMPARE(bench.text("txtStop"), QStringLiteral("8,950,400"));
        QCOMPARE(bench.text("txtStep"), QStringLiteral("1"));
        QCOMPARE(bench.table()->text(400, SweepTable::FrequencyColumn), QStringLiteral("8,950,399"));
        // New sweeps are received without another click.
        int sweeps = 0;
        connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] { ++sweeps; });
        QTRY_VERIFY_WITH_TIMEOUT(sweeps >= 3, 10000);
        QVERIFY(bench.isShown("cmdStop") && !bench.isShown("cmdStart"));
        bench.click("cmdStop");
        QTRY_VERIFY(bench.isShown("cmdStart"));
        QCOMPARE(bench.desktop.boxes.size(), 1);
    }
};

QTEST_MAIN(TestThreeInterfaces)
#include "test_three_interfaces.moc"
