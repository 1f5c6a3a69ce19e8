// SPDX-License-Identifier: MIT
// The same device behind each of the three simulated boards: a crystal with one sharp resonance.
#include "core/number_text.h"
#include "tests/support/window_bench.h"

#include <QSet>

#include <cmath>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr int kSweeps = 200;

// An interface with a good configuration of its own, 8.95 to 9.05 MHz, the board as fast as it can.
QByteArray settings(std::int16_t interfaceType)
{
    const test::ProgramFolder scratch({}, test::ProgramFolder::preparedSettings());
    scratch.set("Config", "Interface", QString::number(interfaceType));
    const QByteArray own = "Interface" + QByteArray::number(interfaceType);
    for (const char *key : {"DDS Device", "DDS Multiplier", "DDS Xtal freq", "DDS Max freq", "DDS Min freq",
                            "ADC Device", "ADC Step", "ADC Offset", "ADC Channel"})
        scratch.set("Config", key, scratch.setting(own.constData(), key));
    scratch.set("Calvorn", "Start", QStringLiteral("8950000"));
    scratch.set("Calvorn", "Stop", QStringLiteral("9050000"));
    scratch.set("Simulator", "Device", QStringLiteral("crystal"));
    scratch.set("Simulator", "Pace", QStringLiteral("none"));
    QFile file(scratch.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int peakRow(const SweepTable &table)
{
    const NumberText numbers;
    int peak = 1;
    double highest = -1e9;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double amplitude = numbers.toDouble(table.text(row, SweepTable::AmplitudeColumn));
        if (amplitude > highest) {
            highest = amplitude;
            peak = row;
        }
    }
    return peak;
}

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
                          settings(static_cast<std::int16_t>(interfaceType)));
        QVERIFY(bench.started);
        QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
        int sweeps = 0;
        QSet<int> peaks;
        connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] {
            if (bench.table()->text(kSweepPoints / 2, SweepTable::SampleColumn) == QStringLiteral("0"))
                return;
            ++sweeps;
            peaks.insert(peakRow(*bench.table()));
        });
        bench.click("cmdStart");
        QTRY_VERIFY_WITH_TIMEOUT(sweeps >= kSweeps, 60000);
        bench.click("cmdStop");
        QTRY_VERIFY(bench.isShown("cmdStart"));
        // 9.000 MHz is row 201 of 8.95 MHz in steps of 250 Hz. Noise may decide between equal neighbours.
        for (const int peak : peaks)
            QVERIFY2(std::abs(peak - 201) <= 1, qPrintable(QString::number(peak)));
        QVERIFY(peaks.contains(201));
        QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
        // It comes up again.
        const int before = sweeps;
        bench.click("cmdStart");
        QTRY_VERIFY_WITH_TIMEOUT(sweeps > before, 10000);
    }
};

QTEST_MAIN(TestThreeInterfaces)
#include "test_three_interfaces.moc"
