// SPDX-License-Identifier: MIT
// Tests the auxiliary outputs and the I2C potentiometer, from the driver's operations to the simulated chips.
#include "tests/server/lpt_bench.h"

#include <QTest>

using namespace calvorn;

class BoardLinesTest : public QObject
{
    Q_OBJECT

private slots:
    void auxBytesAreLatchedOnce();
    void auxIsRememberedUntilThereIsAPort();
    void unknownAuxOutputIsRefused();
    void potTakesEachCommand_data();
    void potTakesEachCommand();
    void nobodyAtTheAddress();
    void noPortNoAcknowledge();
    void edgesAreFiveMicroseconds();
};

void BoardLinesTest::auxBytesAreLatchedOnce()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    const auto latches = bench.board->latches().latches();
    const auto clocks = bench.board->latches().clocks();
    bench.driver.SetAux(250, 1);
    QCOMPARE(bench.board->latches().latches(), latches + 1);
    QCOMPARE(bench.board->latches().clocks(), clocks + 16);
    QCOMPARE(bench.board->latches().aux1(), std::uint8_t{250});
    QCOMPARE(bench.board->latches().aux2(), std::uint8_t{0});
    bench.driver.SetAux(0x5A, 2);
    QCOMPARE(bench.board->latches().aux1(), std::uint8_t{250});
    QCOMPARE(bench.board->latches().aux2(), std::uint8_t{0x5A});
    QCOMPARE(bench.errors.count(), 0);
}

void BoardLinesTest::auxIsRememberedUntilThereIsAPort()
{
    LptBench bench;
    bench.driver.SetAux(0x81, 1);
    bench.driver.SetAux(0x42, 2);
    QCOMPARE(bench.errors.count(), 0);
    QVERIFY(bench.driver.OpenPort(0));
    QCOMPARE(bench.board->latches().aux1(), std::uint8_t{0x81});
    QCOMPARE(bench.board->latches().aux2(), std::uint8_t{0x42});
}

void BoardLinesTest::unknownAuxOutputIsRefused()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetAux(0xFF, 3);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorCode(0), code::kSetting);
    QCOMPARE(bench.board->latches().aux2(), std::uint8_t{0});
}

void BoardLinesTest::potTakesEachCommand_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("pot0");
    QTest::addColumn<int>("pot1");
    QTest::newRow("pot 0") << 0xA9 << 0x80 << 0x80 << 0;
    QTest::newRow("pot 1") << 0xAA << 0x55 << 0 << 0x55;
    QTest::newRow("both") << 0xAF << 0x80 << 0x80 << 0x80;
}

void BoardLinesTest::potTakesEachCommand()
{
    QFETCH(int, command);
    QFETCH(int, value);
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    QVERIFY(bench.driver.WriteI2c(0x50, static_cast<uchar>(command), static_cast<uchar>(value)));
    const I2cPotModel &pot = bench.board->pot();
    QCOMPARE(pot.bytes(),
             (std::vector<std::uint8_t>{0x50, static_cast<std::uint8_t>(command), static_cast<std::uint8_t>(value)}));
    QCOMPARE(pot.pulses(), 27);
    QCOMPARE(pot.stops(), 1);
    QTEST(static_cast<int>(pot.wiper(0)), "pot0");
    QTEST(static_cast<int>(pot.wiper(1)), "pot1");
    QVERIFY(pot.sda()); // the bus is free again
}

void BoardLinesTest::nobodyAtTheAddress()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    QVERIFY(bench.driver.WriteI2c(0x50, 0xA9, 0x33));
    for (const uchar address : {uchar{0x52}, uchar{0x5E}, uchar{0x00}, uchar{0xFF}, uchar{0x51}})
        QVERIFY(!bench.driver.WriteI2c(address, 0xA9, 0x80));
    QVERIFY(!bench.driver.WriteI2c(0x50, 0x12, 0x80)); // unknown command
    QCOMPARE(bench.board->pot().stops(), 7);
    QCOMPARE(bench.board->pot().wiper(0), std::uint8_t{0x33});
    QCOMPARE(bench.errors.count(), 0);
}

void BoardLinesTest::noPortNoAcknowledge()
{
    LptBench bench;
    QVERIFY(!bench.driver.WriteI2c(0x50, 0xA9, 0x80));
    QCOMPARE(bench.errors.count(), 0);
}

void BoardLinesTest::edgesAreFiveMicroseconds()
{
    LptBench bench;
    QVERIFY(bench.driver.OpenPort(0));
    const auto before = bench.board->boardTime();
    QVERIFY(bench.driver.WriteI2c(0x50, 0xA9, 0x80));
    // 27 bits with three edges each; an edge takes at least 5 us.
    QVERIFY(bench.board->boardTime() - before >= std::chrono::microseconds(27 * 3 * 5));
}

QTEST_APPLESS_MAIN(BoardLinesTest)
#include "board_lines.moc"
