// SPDX-License-Identifier: MIT
// Tests byte-wide loading: the chip receives the same words as with serial loading, in 17 port accesses per word.
#include "protocol/lpt_wiring_parser.h"
#include "server/boards/ad985x_model.h"
#include "tests/server/lpt_bench.h"
#include "tests/server/recording_port.h"

#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {

BoardWiring byteWide()
{
    return parseBoardWiring({{QString(), QStringLiteral("Load"), QStringLiteral("byte")}});
}

std::uint32_t wordOf(const LptBench &bench)
{
    return static_cast<const Ad985xModel &>(bench.board->dds()).word();
}

} // namespace

class LptByteLoadingTest : public QObject
{
    Q_OBJECT

private slots:
    void sameWordsAsSerial_data();
    void sameWordsAsSerial();
    void sweepIsRight();
    void accessesOfALoad();
    void bytesOnTheBus();
    void ad9951IsLoadedSeriallyAllTheSame();
    void auxOutputsOnTheBus();
};

void LptByteLoadingTest::sameWordsAsSerial_data()
{
    QTest::addColumn<QString>("chip");
    QTest::addColumn<double>("xtal");
    QTest::addColumn<int>("multiplier");
    QTest::newRow("AD9850 125 MHz") << "AD9850" << 125e6 << 1;
    QTest::newRow("AD9851 x6") << "AD9851" << 30e6 << 6;
}

void LptByteLoadingTest::sameWordsAsSerial()
{
    QFETCH(QString, chip);
    QFETCH(double, xtal);
    QFETCH(int, multiplier);
    LptBench serial;
    LptBench bytes;
    bytes.wiring = byteWide();
    for (LptBench *bench : {&serial, &bytes}) {
        bench->settings.chip = ddsChipFromName(chip).value();
        bench->settings.clockHz = xtal;
        QVERIFY(bench->driver.OpenPort(0));
        bench->driver.SetDdsDevice(chip);
        bench->driver.SetXtalFrequency(xtal);
        bench->driver.SetMultiplier(static_cast<short>(multiplier));
    }
    for (int point = 0; point < LptBench::kPoints; ++point) {
        const int hertz = 100'000 + point * 98'765;
        serial.driver.SetFrequency(hertz);
        bytes.driver.SetFrequency(hertz);
        QVERIFY(wordOf(serial) != 0);
        QCOMPARE(wordOf(bytes), wordOf(serial));
        QCOMPARE(bytes.board->dds().output().hertz, serial.board->dds().output().hertz);
    }
    QVERIFY(static_cast<const Ad985xModel &>(serial.board->dds()).isSerial());
    QVERIFY(!static_cast<const Ad985xModel &>(bytes.board->dds()).isSerial());
    QCOMPARE(bytes.board->dds().violations(), 0U);
    QCOMPARE(serial.board->dds().violations(), 0U);
}

void LptByteLoadingTest::sweepIsRight()
{
    LptBench bench;
    bench.settings.device = DeviceKind::Crystal;
    bench.wiring = byteWide();
    bench.recordAtMost = 2 * LptBench::kPoints;
    bench.takeVectors();
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.PrepareSweep(9'000'000 - 250 * 100, 250);
    bench.driver.RunSweep();
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    int peak = 0;
    for (int point = 0; point < LptBench::kPoints; ++point) {
        const ConversionRecord &record = bench.board->conversions()[static_cast<std::size_t>(2 * point)];
        QVERIFY(std::fabs(record.hertz - (8'975'000.0 + 250.0 * point)) <= 80e6 / 8'589'934'592.0);
        QCOMPARE(bench.vector(0).at(point), record.count);
        if (record.count > bench.vector(0).at(peak))
            peak = point;
    }
    QCOMPARE(peak, 100);
    QCOMPARE(bench.board->dds().violations(), 0U);
    QCOMPARE(bench.board->adc().earlyFrames(), std::uint64_t{0});
}

void LptByteLoadingTest::accessesOfALoad()
{
    LptBench bench;
    bench.wiring = byteWide();
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetFrequency(5'000'000);
    const auto before = bench.board->accesses();
    bench.driver.SetFrequency(6'000'000);
    QCOMPARE(bench.board->accesses() - before, std::uint64_t{17});
}

// 10 MHz with a 125 MHz clock is 00 14 7A E1 48. STROBE pulses once per byte on D0..D7, then AUTOFD pulses.
void LptByteLoadingTest::bytesOnTheBus()
{
    RecordingPort port;
    ParallelPins pins(port, kByteWideLptWiring);
    DdsLoader loader(pins, DdsLoading::Bytes);
    loader.load({DdsChip::Ad9850, 125e6, 1}, 0x147AE148U);
    const std::vector<std::uint8_t> bytes = {0x00, 0x14, 0x7A, 0xE1, 0x48};
    QCOMPARE(port.data, bytes);
    // The port inverts both lines: a 0 bit drives the pin high. The AUTOFD bit is still 0 during the first writes.
    const std::vector<std::uint8_t> control = {0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 1, 3};
    QCOMPARE(port.control, control);
}

void LptByteLoadingTest::ad9951IsLoadedSeriallyAllTheSame()
{
    LptBench bench;
    bench.settings.chip = DdsChip::Ad9951;
    bench.settings.clockHz = 20e6;
    bench.wiring = byteWide();
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetDdsDevice(QStringLiteral("AD9951"));
    bench.driver.SetXtalFrequency(20e6);
    bench.driver.SetMultiplier(20);
    for (const int hertz : {1'000'000, 55'555'555, 144'000'000}) {
        bench.driver.SetFrequency(hertz);
        QVERIFY(std::fabs(bench.board->dds().output().hertz - hertz) < 0.05);
    }
    QVERIFY(bench.driver.ReadDetector() >= 0);
    QCOMPARE(bench.board->dds().violations(), 0U);
    QCOMPARE(bench.errors.count(), 0);
}

// Byte-wide loading also clocks the shift registers of auxiliary outputs on the same bus, but never latches them.
void LptByteLoadingTest::auxOutputsOnTheBus()
{
    LptBench bench;
    bench.wiring = byteWide();
    for (LineWiring &line : bench.wiring.lines) {
        if (line.line == LptLine::AuxData)
            line = {line.line, PortRegister::Data, 0x02, false};
        else if (line.line == LptLine::AuxClock)
            line = {line.line, PortRegister::Data, 0x04, false};
    }
    QVERIFY(bench.driver.OpenPort(0));
    bench.driver.SetFrequency(5'000'000);
    bench.driver.SetAux(0x99, 1);
    bench.driver.SetFrequency(7'000'000);
    QVERIFY(std::fabs(bench.board->dds().output().hertz - 7e6) < 0.01);
    QVERIFY(bench.board->latches().clocks() > 32);
    QCOMPARE(bench.board->latches().latches(), std::uint64_t{0});
    QCOMPARE(bench.board->dds().violations(), 0U);
}

QTEST_GUILESS_MAIN(LptByteLoadingTest)
#include "lpt_byte_loading.moc"
