// SPDX-License-Identifier: MIT
// Tests calvorn-sweep with boards written from docs/hardware/ alone: correct rows from good boards, and the correct
// exit code for faulty boards.
#include "tests/support/interface_rows.h"
#include "tests/support/page_rows.h"
#include "tests/support/sweep_tool.h"

#include <memory>

using namespace calvorn;
using calvorn::test::Tool;

namespace {

const QStringList kToFile{QStringLiteral("--output=sweep.csv")};

// Checks that each count in the file was measured at the frequency on its line.
bool isRight(const Tool &tool, std::int16_t interfaceType)
{
    const QList<QByteArray> lines = test::contents(tool.inFolder("sweep.csv")).split('\n');
    const auto field = [&lines](int row, int column) {
        return lines.value(row).trimmed().split(',').value(column).toInt();
    };
    const int step = field(2, 1) - field(1, 1);
    for (int row = 1; row <= kSweepPoints; ++row)
        if (field(row, 2) != test::countAtRow(interfaceType, 3, field(1, 1), step, row))
            return false;
    return step != 0;
}

} // namespace

class TestToolOnPageBoards : public QObject
{
    Q_OBJECT

private slots:
    void healthyBoards_data() { test::addInterfaceRows(); }
    void healthyBoards();
    void strayBytesAtTheOpening_data();
    void strayBytesAtTheOpening();
    void aPortThatGoesLeavesNoFile();
    void outputsAreThoseOfTheWindow();
    void aRemarkComesOnce();
    void aMultiplierThatCannotWork();
};

void TestToolOnPageBoards::healthyBoards()
{
    QFETCH(int, interfaceType);
    const auto type = static_cast<std::int16_t>(interfaceType);
    const test::ParallelPageBoard parallel;
    const test::SerialPageBoard serial(type == kInterfaceVna ? "vna_board_by_the_page" : "pic_board_by_the_page");
    Tool tool(test::pageSettings(type, serial.link()));
    QCOMPARE(tool.run(kToFile + QStringList{QStringLiteral("--sweeps=5")}), 0);
    QVERIFY(isRight(tool, type));
}

void TestToolOnPageBoards::strayBytesAtTheOpening_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QByteArray>("fault");
    QTest::newRow("PIC, a stale answer") << int{kInterfacePic} << QByteArray("strayopen 212B0D");
    QTest::newRow("PIC, chatter") << int{kInterfacePic} << QByteArray("chatter 1");
    QTest::newRow("MiniVNA, one byte") << int{kInterfaceVna} << QByteArray("strayonce 00");
    QTest::newRow("MiniVNA, a sample") << int{kInterfaceVna} << QByteArray("strayopen FF012C03");
}

void TestToolOnPageBoards::strayBytesAtTheOpening()
{
    QFETCH(int, interfaceType);
    QFETCH(QByteArray, fault);
    const auto type = static_cast<std::int16_t>(interfaceType);
    test::SerialPageBoard board(type == kInterfaceVna ? "vna_board_by_the_page" : "pic_board_by_the_page");
    for (int run = 0; run < 3; ++run) {
        board.tell(fault);
        Tool tool(test::pageSettings(type, board.link()));
        QVERIFY2(tool.run(kToFile) == 0, qPrintable(tool.errors.join(u'\n')));
        QVERIFY(isRight(tool, type));
    }
}

void TestToolOnPageBoards::aPortThatGoesLeavesNoFile()
{
    const test::ParallelPageBoard board;
    Tool tool(test::pageSettings(kInterfaceLpt));
    tool.start(kToFile + QStringList{QStringLiteral("--sweeps=10000")});
    QVERIFY(tool.sweepsTwice());
    QVERIFY(!board.events("modes").isEmpty());
    board.setFault("gone");
    QVERIFY(tool.process.state() == QProcess::NotRunning || tool.process.waitForFinished(20'000));
    QCOMPARE(tool.process.exitCode(), 3);
    QVERIFY(tool.process.readAllStandardError().contains("The parallel port /dev/parport0 has disappeared."));
    QVERIFY(!QFile::exists(tool.inFolder("sweep.csv")));
}

void TestToolOnPageBoards::outputsAreThoseOfTheWindow()
{
    const test::ParallelPageBoard board;
    QByteArray settings = test::pageSettings(kInterfaceLpt);
    settings.replace("Aux_1=0", "Aux_1=5").replace("Aux_2=0", "Aux_2=9").replace("Pot_2=0", "Pot_2=77");
    settings.replace("Inverse Logic=0", "Inverse Logic=1");
    Tool tool(settings);
    QCOMPARE(tool.run(kToFile), 0);
    QVERIFY(isRight(tool, kInterfaceLpt));
    QCOMPARE(board.events("aux").last(), QByteArray("FA F6"));
    QCOMPARE(board.events("pot"), QList<QByteArray>{"50 A9 4D"});
    QCOMPARE(board.events("power-down").size(), 1);
}

void TestToolOnPageBoards::aRemarkComesOnce()
{
    const test::ParallelPageBoard board;
    Tool tool(test::pageSettings(kInterfaceLpt));
    QCOMPARE(tool.run(kToFile + QStringList{QStringLiteral("--stop=35000000")}), 0);
    QCOMPARE(tool.errors.filter(QStringLiteral("useful maximum")).size(), 1);
}

void TestToolOnPageBoards::aMultiplierThatCannotWork()
{
    const test::ParallelPageBoard board;
    Tool tool(test::pageSettings(kInterfaceLpt)
                  .replace("DDS Multiplier=1\r\nDDS Xtal freq=80000000", "DDS Multiplier=6\r\nDDS Xtal freq=80000000"));
    QCOMPARE(tool.run(kToFile), 4);
    QCOMPARE(tool.sentence(),
             QStringLiteral("[Config] DDS Multiplier=6: the AD9850 has no multiplier; the value must be 1."));
    QVERIFY(!QFile::exists(tool.inFolder("sweep.csv")));
    QVERIFY(board.events("word").isEmpty());
}

QTEST_GUILESS_MAIN(TestToolOnPageBoards)
#include "test_tool_on_page_boards.moc"
