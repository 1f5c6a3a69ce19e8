// SPDX-License-Identifier: MIT
// What the user sees when a board misbehaves: every simulated fault on every interface, with the real server. An
// unreliable sweep is not shown, the window never claims to be sweeping without a board, and the next sweep starts
// normally.
#include "tests/support/crystal_sweep.h"
#include "tests/support/window_bench.h"

#include <QListWidget>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

// The window with a simulated board that has the given fault.
struct FaultBench : WindowBench
{
    FaultBench(std::int16_t interfaceType, const QString &fault)
        : WindowBench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                      test::crystalSettings(interfaceType, fault))
    {
        QObject::connect(table(), &SweepTable::dataChanged, window.get(), [this] {
            if (table()->text(test::kCrystalRow, SweepTable::SampleColumn) == QStringLiteral("0"))
                return;
            ++sweeps;
            wrongSweeps += test::peakRow(*table()) == test::kCrystalRow ? 0 : 1;
        });
    }

    bool logs(const QString &text) const
    {
        return !find<QListWidget>("lstLOG")->findItems(text, Qt::MatchContains).isEmpty();
    }
    int counted() const { return text("txtErrori").toInt(); }
    bool showsBox(const QString &text) const
    {
        return std::any_of(desktop.boxes.begin(), desktop.boxes.end(),
                           [&text](const test::FakeDesktop::Box &box) { return box.text.contains(text); });
    }
    bool isIdle() const { return isShown("cmdStart") && !isShown("cmdStop"); }

    int sweeps = 0;
    int wrongSweeps = 0; // the resonance was in another row
};

} // namespace

class TestBoardFaults : public QObject
{
    Q_OBJECT

private slots:
    void damageIsCountedAndTheSweepGoesOn_data();
    void damageIsCountedAndTheSweepGoesOn();
    void failureEndsTheSweep_data();
    void failureEndsTheSweep();
    void talkIsOverheard_data();
    void talkIsOverheard();
    void lostPortComesBack_data();
    void lostPortComesBack();
    void refusingBoard_data();
    void refusingBoard();
    void flippedBitsOfTheMiniVna();
    void silentConverterOfTheParallelPort_data();
    void silentConverterOfTheParallelPort();
    void serialFaultsOnTheParallelPort_data();
    void serialFaultsOnTheParallelPort();
};

void TestBoardFaults::damageIsCountedAndTheSweepGoesOn_data()
{
    QTest::addColumn<QString>("fault");
    for (const char *fault : {"drop", "add", "corrupt"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestBoardFaults::damageIsCountedAndTheSweepGoesOn()
{
    QFETCH(QString, fault);
    FaultBench bench(kInterfacePic, fault);
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.sweeps >= 20 && bench.counted() >= 10, 10'000);
    QVERIFY(!bench.isIdle());
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isIdle());
    QCOMPARE(bench.wrongSweeps, 0);
    QVERIFY(!bench.logs(QStringLiteral("damaged")));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestBoardFaults::failureEndsTheSweep_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("sweeps");
    QTest::addColumn<int>("counted");
    QTest::addColumn<QString>("logged");
    const auto late = QStringLiteral("3 The board no longer delivers valid sweeps; the sweep ends.");
    const auto failed = QStringLiteral("3 The MiniVNA failed to deliver three sweeps in a row; the sweep ends.");
    // The server delivers a frame only when the next one begins.
    QTest::newRow("PIC, silence") << int{kInterfacePic} << "silence" << 1 << 0 << late;
    QTest::newRow("PIC, half") << int{kInterfacePic} << "half" << 1 << 0 << late;
    QTest::newRow("MiniVNA, silence") << int{kInterfaceVna} << "silence" << 1 << 3 << failed;
    QTest::newRow("MiniVNA, half") << int{kInterfaceVna} << "half" << 1 << 3 << failed;
    QTest::newRow("MiniVNA, drop") << int{kInterfaceVna} << "drop" << 0 << 3 << failed;
    QTest::newRow("MiniVNA, add") << int{kInterfaceVna} << "add" << 0 << 3 << failed;
}

void TestBoardFaults::failureEndsTheSweep()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, fault);
    QFETCH(int, sweeps);
    QFETCH(int, counted);
    QFETCH(QString, logged);
    FaultBench bench(static_cast<std::int16_t>(interfaceType), fault);
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QVERIFY(!bench.isIdle());
    QTRY_VERIFY_WITH_TIMEOUT(bench.isIdle(), 15'000);
    QCOMPARE(bench.sweeps, sweeps);
    QCOMPARE(bench.wrongSweeps, 0);
    QCOMPARE(bench.counted(), counted);
    QVERIFY(bench.logs(logged));
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestBoardFaults::talkIsOverheard_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QString>("fault");
    for (const char *fault : {"chatter", "garbage"}) {
        QTest::addRow("PIC, %s", fault) << int{kInterfacePic} << QString::fromLatin1(fault);
        QTest::addRow("MiniVNA, %s", fault) << int{kInterfaceVna} << QString::fromLatin1(fault);
    }
}

void TestBoardFaults::talkIsOverheard()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, fault);
    FaultBench bench(static_cast<std::int16_t>(interfaceType), fault);
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.sweeps >= 3, 15'000);
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isIdle());
    QCOMPARE(bench.wrongSweeps, 0);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestBoardFaults::lostPortComesBack_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QString>("told");
    QTest::newRow("PIC") << int{kInterfacePic} << QStringLiteral("2 The connection to /dev/pts/");
    QTest::newRow("parallel port") << int{kInterfaceLpt} << QStringLiteral("2 The parallel port has disappeared.");
    QTest::newRow("MiniVNA") << int{kInterfaceVna} << QStringLiteral("2 The connection to /dev/pts/");
}

void TestBoardFaults::lostPortComesBack()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, told);
    FaultBench bench(static_cast<std::int16_t>(interfaceType), QStringLiteral("unplug"));
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.isIdle(), 10'000);
    QVERIFY(bench.logs(told));
    QCOMPARE(bench.counted(), 0);
    const int boxes = interfaceType == kInterfaceLpt ? 1 : 0;
    QCOMPARE(bench.desktop.boxes.size(), boxes);

    const int before = bench.sweeps;
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.sweeps >= before + 3, 10'000);
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isIdle());
    QCOMPARE(bench.wrongSweeps, 0);
    QCOMPARE(bench.desktop.boxes.size(), boxes);
}

void TestBoardFaults::refusingBoard_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QString>("boxAtStart");
    QTest::addColumn<QString>("logged");
    QTest::addColumn<QString>("box");
    QTest::newRow("PIC") << int{kInterfacePic} << "Verify the serial interface."
                         << "3 The board did not start the sweep." << QString();
    QTest::newRow("parallel port") << int{kInterfaceLpt} << "Please verify 'SetUp/Configuration/Ports'."
                                   << "2 The parallel port is not open."
                                   << "is set to refuse.";
    QTest::newRow("MiniVNA") << int{kInterfaceVna} << QString()
                             << "3 The MiniVNA failed to deliver three sweeps in a row; the sweep ends." << QString();
}

void TestBoardFaults::refusingBoard()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, boxAtStart);
    QFETCH(QString, logged);
    QFETCH(QString, box);
    FaultBench bench(static_cast<std::int16_t>(interfaceType), QStringLiteral("refuse"));
    QVERIFY(bench.started);
    QCOMPARE(bench.desktop.boxes.size(), boxAtStart.isEmpty() ? 0 : 1);
    QVERIFY(boxAtStart.isEmpty() || bench.showsBox(boxAtStart));
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.logs(logged) && bench.isIdle(), 15'000);
    QCOMPARE(bench.logs(QStringLiteral("P> Errore inizializza ciclo sweep")), interfaceType == kInterfacePic);
    QVERIFY(box.isEmpty() || bench.showsBox(box));
    QCOMPARE(bench.sweeps, 0);
}

// A corrupted count is detected only if one of the six unused bits is flipped. The displayed sweep has 400 valid
// counts, some of which may be spikes.
void TestBoardFaults::flippedBitsOfTheMiniVna()
{
    FaultBench bench(kInterfaceVna, QStringLiteral("corrupt"));
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.isIdle(), 15'000);
    QVERIFY(bench.sweeps >= 1);
    QVERIFY(bench.counted() >= 3);
    QVERIFY(bench.logs(QStringLiteral("3 The MiniVNA failed to deliver three sweeps in a row; the sweep ends.")));
    QVERIFY(bench.desktop.boxes.isEmpty());
    for (int row = 1; row <= 400; ++row) {
        const int count = bench.table()->text(row, SweepTable::SampleColumn).toInt();
        QVERIFY2(count >= 0 && count <= 1'024, qPrintable(QString::number(count)));
    }
}

void TestBoardFaults::silentConverterOfTheParallelPort_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("silence") << QStringLiteral("silence");
    QTest::newRow("half") << QStringLiteral("half");
}

// A data line stuck low is a valid reading.
void TestBoardFaults::silentConverterOfTheParallelPort()
{
    QFETCH(QString, fault);
    FaultBench bench(kInterfaceLpt, fault);
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QTRY_COMPARE(bench.table()->text(400, SweepTable::SampleColumn), QStringLiteral("0"));
    QTRY_COMPARE(bench.table()->text(test::kCrystalRow, SweepTable::SampleColumn), QStringLiteral("0"));
    QVERIFY(!bench.isIdle());
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isIdle());
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestBoardFaults::serialFaultsOnTheParallelPort_data()
{
    QTest::addColumn<QString>("fault");
    for (const char *fault : {"add", "corrupt", "chatter", "garbage"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestBoardFaults::serialFaultsOnTheParallelPort()
{
    QFETCH(QString, fault);
    FaultBench bench(kInterfaceLpt, fault);
    QVERIFY(bench.started);
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.sweeps >= 3, 10'000);
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isIdle());
    QCOMPARE(bench.wrongSweeps, 0);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

QTEST_MAIN(TestBoardFaults)
#include "test_board_faults.moc"
