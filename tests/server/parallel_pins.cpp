// SPDX-License-Identifier: MIT
// Tests the wiring table and the number of port writes per tuning word.
#include "server/links/parallel_pins.h"
#include "server/drivers/dds_loader.h"
#include "tests/server/recording_port.h"

#include <QTest>

using namespace calvorn;

class ParallelPinsTest : public QObject
{
    Q_OBJECT

private slots:
    void tableIsInOrder();
    void severalLinesOneWrite();
    void invertedOutputs();
    void inputs_data();
    void inputs();
    void otherWiring();
    void loadCosts82Writes_data();
    void loadCosts82Writes();
    void pllIsGivenTimeToLock();
};

void ParallelPinsTest::tableIsInOrder()
{
    for (std::size_t index = 0; index < 13; ++index)
        QCOMPARE(static_cast<std::size_t>(kStandardLptWiring[index].line), index);
}

void ParallelPinsTest::severalLinesOneWrite()
{
    RecordingPort port;
    ParallelPins pins(port);
    pins.set({{LptLine::DdsClock, true}, {LptLine::DdsData, true}, {LptLine::I2cData, true}});
    pins.set({{LptLine::DdsClock, false}});
    QCOMPARE(port.data, (std::vector<std::uint8_t>{0x85, 0x84}));
    QVERIFY(port.control.empty());
}

void ParallelPinsTest::invertedOutputs()
{
    RecordingPort port;
    ParallelPins pins(port);
    pins.set({{LptLine::AuxData, false}, {LptLine::AuxClock, false}, {LptLine::AuxLatch, false}});
    pins.set({{LptLine::AuxData, true}, {LptLine::AuxLatch, true}});
    // The port inverts STROBE and AUTOFD: XOR 03 converts register bits to pin levels.
    QCOMPARE(port.control.at(0) ^ 0x03, 0x00);
    QCOMPARE(port.control.at(1) ^ 0x03, 0x05);
}

void ParallelPinsTest::inputs_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("adc");
    QTest::addColumn<bool>("sda");
    QTest::newRow("none") << 0x00 << false << false;
    QTest::newRow("ACK") << 0x40 << true << false;
    QTest::newRow("SELECT") << 0x10 << false << true;
    QTest::newRow("the others") << 0xAF << false << false;
}

void ParallelPinsTest::inputs()
{
    QFETCH(int, status);
    RecordingPort port;
    port.status = static_cast<std::uint8_t>(status);
    ParallelPins pins(port);
    QTEST(pins.read(LptLine::AdcOut), "adc");
    QTEST(pins.read(LptLine::I2cDataBack), "sda");
}

void ParallelPinsTest::otherWiring()
{
    LptWiring wiring = kStandardLptWiring;
    wiring[static_cast<std::size_t>(LptLine::AdcOut)] = {LptLine::AdcOut, PortRegister::Status, 0x80, true};
    wiring[static_cast<std::size_t>(LptLine::DdsClock)] = {LptLine::DdsClock, PortRegister::Control, 0x08, true};
    RecordingPort port;
    ParallelPins pins(port, wiring);
    pins.set({{LptLine::DdsClock, false}, {LptLine::DdsData, true}});
    QCOMPARE(port.data, (std::vector<std::uint8_t>{0x04}));
    QCOMPARE(port.control, (std::vector<std::uint8_t>{0x08}));
    QVERIFY(pins.read(LptLine::AdcOut));
}

void ParallelPinsTest::loadCosts82Writes_data()
{
    QTest::addColumn<int>("chip");
    QTest::newRow("AD9850") << static_cast<int>(DdsChip::Ad9850);
    QTest::newRow("AD9851") << static_cast<int>(DdsChip::Ad9851);
    QTest::newRow("AD9951") << static_cast<int>(DdsChip::Ad9951);
}

void ParallelPinsTest::loadCosts82Writes()
{
    QFETCH(int, chip);
    RecordingPort port;
    ParallelPins pins(port);
    DdsLoader(pins).load({static_cast<DdsChip>(chip), 80e6, 1}, 0x12345678);
    QCOMPARE(port.data.size(), std::size_t{82});
    QVERIFY(port.control.empty());
}

void ParallelPinsTest::pllIsGivenTimeToLock()
{
    RecordingPort bypassed;
    ParallelPins bypassedPins(bypassed);
    DdsLoader(bypassedPins).startUp({DdsChip::Ad9951, 400e6, 1}, 0);
    QVERIFY(bypassed.waited < std::chrono::milliseconds(1));

    RecordingPort locked;
    ParallelPins lockedPins(locked);
    DdsLoader(lockedPins).startUp({DdsChip::Ad9951, 100e6, 4}, 0);
    QVERIFY(locked.waited >= std::chrono::milliseconds(10));
}

QTEST_APPLESS_MAIN(ParallelPinsTest)
#include "parallel_pins.moc"
