// SPDX-License-Identifier: MIT
// Without a configured detector law, the table matches the frequencies, counts and amplitudes in files that
// calvorn-sweep wrote before detector laws existed.
#include "tests/support/sweep_tool.h"
#include "tests/support/walk_numbers.h"
#include "tests/support/window_bench.h"

#include <QSignalSpy>

using namespace calvorn;

namespace {

// The prepared settings for this interface, with the board at full speed.
QByteArray settings(int interfaceType, int scale)
{
    const test::ProgramFolder scratch({}, test::ProgramFolder::preparedSettings());
    scratch.set("Config", "Interface", QString::number(interfaceType));
    scratch.set("Calvorn", "Scale", QString::number(scale));
    scratch.set("Simulator", "Pace", QStringLiteral("none"));
    return test::contents(scratch.iniPath());
}

} // namespace

class TestLinearTable : public QObject
{
    Q_OBJECT

private slots:
    void theTableIsAsItWas_data();
    void theTableIsAsItWas();
};

void TestLinearTable::theTableIsAsItWas_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("name");
    QTest::newRow("PIC, volts") << int{kInterfacePic} << 0 << "pic-volts.csv";
    QTest::newRow("PIC, dB") << int{kInterfacePic} << 2 << "pic-db.csv";
    QTest::newRow("parallel port, volts") << int{kInterfaceLpt} << 0 << "lpt-volts.csv";
    QTest::newRow("parallel port, dB") << int{kInterfaceLpt} << 2 << "lpt-db.csv";
    QTest::newRow("MiniVNA, volts") << int{kInterfaceVna} << 0 << "vna-volts.csv";
    QTest::newRow("MiniVNA, dB") << int{kInterfaceVna} << 2 << "vna-db.csv";
}

void TestLinearTable::theTableIsAsItWas()
{
    QFETCH(int, interfaceType);
    QFETCH(int, scale);
    QFETCH(QString, name);
    const test::WindowBench bench(test::builtServer(), settings(interfaceType, scale));
    QVERIFY(bench.started);
    QSignalSpy stored(&bench.station->instrument.conversion(), &SampleConversion::vectorStored);
    QTest::keyClick(bench.window.get(), Qt::Key_F5, Qt::ShiftModifier);
    QTRY_COMPARE_WITH_TIMEOUT(stored.count(), 1, 10'000);
    const QList<QByteArray> lines =
        test::contents(QStringLiteral(CALVORN_SOURCE_DIR "/tests/tools/linear/") + name).split('\n');
    QCOMPARE(lines.size(), 402);
    const SweepTable &table = *bench.table();
    for (int row = 1; row <= 400; ++row) {
        const QList<QByteArray> fields = lines[row].trimmed().split(',');
        QCOMPARE(fields.size(), 4);
        QCOMPARE(test::readNumber(table.text(row, SweepTable::FrequencyColumn)), fields[1].toDouble());
        QCOMPARE(test::readNumber(table.text(row, SweepTable::SampleColumn)), fields[2].toDouble());
        const double thousandth = test::readNumber(table.text(row, SweepTable::AmplitudeColumn)) * 1000.0;
        QCOMPARE(std::nearbyint(thousandth), fields[3].toDouble());
        QVERIFY(std::abs(thousandth - fields[3].toDouble()) < 1e-6);
    }
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
}

QTEST_MAIN(TestLinearTable)
#include "test_linear_table.moc"
