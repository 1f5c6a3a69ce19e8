// SPDX-License-Identifier: MIT
// The same device behind each of the three simulated boards: a crystal with one sharp resonance.
#include "tests/support/crystal_sweep.h"
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
    void theResonanceStandsInTheSameRow_data()
    {
        QTest::addColumn<int>("interfaceType");
        QTest::newRow("PIC") << static_cast<int>(kInterfacePic);
        QTest::newRow("parallel port") << static_cast<int>(kInterfaceLpt);
        QTest::newRow("MiniVNA") << static_cast<int>(kInterfaceVna);
    }

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
            if (bench.table()->text(kSweepPoints / 2, SweepTable::SampleColumn) == QStringLiteral("0"))
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
        // It comes up again.
        const int before = sweeps;
        bench.click("cmdStart");
        QTRY_VERIFY_WITH_TIMEOUT(sweeps > before, 10000);
    }
};

QTEST_MAIN(TestThreeInterfaces)
#include "test_three_interfaces.moc"
