// SPDX-License-Identifier: MIT
// Tests that the simulated generator chips decode the loader's bits and report data-sheet violations.
#include "server/boards/ad985x_model.h"
#include "server/boards/ad9951_model.h"
#include "server/boards/simulated_parallel_port.h"
#include "server/drivers/dds_loader.h"
#include "server/synthesiser/tuning_word.h"
#include "tests/server/lpt_bench.h"

#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {

void clockBit(DdsChipModel &model, bool bit)
{
    model.drive({false, false, bit, false});
    model.drive({true, false, bit, false});
}

void pulseUpdate(DdsChipModel &model)
{
    model.drive({false, true, false, false});
    model.drive({false, false, false, false});
}

void sendLsbFirst(DdsChipModel &model, std::uint64_t bits, int count)
{
    for (int bit = 0; bit < count; ++bit)
        clockBit(model, bit < 64 && (bits >> bit & 1U) != 0); // zeros beyond the word
}

void sendByte(DdsChipModel &model, int byte)
{
    for (int bit = 7; bit >= 0; --bit)
        clockBit(model, (byte >> bit & 1) != 0);
}

void enterSerial(Ad985xModel &model)
{
    model.drive({false, false, false, true});
    model.drive({});
    clockBit(model, false);
    pulseUpdate(model);
}

} // namespace

class DdsModelsTest : public QObject
{
    Q_OBJECT

private slots:
    void serialModeAndReset();
    void incompleteLoadIsFlagged();
    void forbiddenBitsAreFlagged();
    void imageAndRollOff();
    void powerDownIsSilent();
    void ad9951TakesEffectWithUpdate();
    void ad9951LosesSync();
    void ad9850NeverSeesAFactoryBit();
};

void DdsModelsTest::serialModeAndReset()
{
    Ad985xModel model(DdsChip::Ad9850, 125e6);
    QVERIFY(!model.isSerial());
    enterSerial(model);
    QVERIFY(model.isSerial());
    sendLsbFirst(model, 0x147AE148U, 40);
    QCOMPARE(model.word(), 0U);
    pulseUpdate(model);
    QCOMPARE(model.word(), 0x147AE148U);
    QVERIFY(std::fabs(model.output().hertz - 10e6) < 0.015);
    QCOMPARE(model.violations(), 0U);
    model.drive({false, false, false, true});
    QVERIFY(!model.isSerial());
    QCOMPARE(model.output().amplitude, 0.0);
}

void DdsModelsTest::incompleteLoadIsFlagged()
{
    for (const int count : {1, 39, 41, 80}) {
        Ad985xModel model(DdsChip::Ad9850, 125e6);
        enterSerial(model);
        sendLsbFirst(model, 0, count);
        pulseUpdate(model);
        QVERIFY2(model.violated(DdsViolation::WrongBitCount), qPrintable(QString::number(count)));
    }
    Ad985xModel parallel(DdsChip::Ad9850, 125e6);
    for (int byte = 0; byte < 6; ++byte)
        clockBit(parallel, false);
    QVERIFY(parallel.violated(DdsViolation::WrongBitCount));
}

void DdsModelsTest::forbiddenBitsAreFlagged()
{
    Ad985xModel old(DdsChip::Ad9850, 125e6);
    enterSerial(old);
    sendLsbFirst(old, std::uint64_t{1} << 32, 40);
    pulseUpdate(old);
    QVERIFY(old.violated(DdsViolation::FactoryBit));

    Ad985xModel young(DdsChip::Ad9851, 30e6);
    enterSerial(young);
    sendLsbFirst(young, std::uint64_t{1} << 32 | 0x0E38E38EU, 40);
    pulseUpdate(young);
    QCOMPARE(young.violations(), 0U);
    QVERIFY(std::fabs(young.output().hertz - 10e6) < 0.021);
    sendLsbFirst(young, std::uint64_t{2} << 32, 40);
    pulseUpdate(young);
    QVERIFY(young.violated(DdsViolation::ForbiddenControl));
}

void DdsModelsTest::imageAndRollOff()
{
    Ad985xModel model(DdsChip::Ad9850, 80e6);
    enterSerial(model);
    sendLsbFirst(model, 0xC0000000U, 40); // 60 MHz with an 80 MHz clock
    pulseUpdate(model);
    QCOMPARE(model.output().hertz, 20e6);
    QVERIFY(std::fabs(model.output().amplitude - 0.9003163) < 1e-6); // sin(pi/4) / (pi/4)
}

void DdsModelsTest::powerDownIsSilent()
{
    Ad985xModel model(DdsChip::Ad9850, 80e6);
    enterSerial(model);
    sendLsbFirst(model, std::uint64_t{4} << 32 | 0x20000000U, 40);
    pulseUpdate(model);
    QCOMPARE(model.output().amplitude, 0.0);
    QCOMPARE(model.violations(), 0U);
}

void DdsModelsTest::ad9951TakesEffectWithUpdate()
{
    Ad9951Model model(100e6);
    for (const int byte : {0x01, 0x00, 0x00, 0x24, 0x04, 0x06, 0x66, 0x66, 0x66})
        sendByte(model, byte);
    QCOMPARE(model.output().amplitude, 0.0);
    pulseUpdate(model);
    QCOMPARE(model.multiplier(), 4);
    QCOMPARE(model.active(4), 0x06666666U);
    QVERIFY(std::fabs(model.output().hertz - 10e6) < 0.05);
    for (const int byte : {0x00, 0x00, 0x00, 0x02, 0x20})
        sendByte(model, byte);
    pulseUpdate(model);
    QCOMPARE(model.output().amplitude, 0.0);
    QCOMPARE(model.violations(), 0U);
}

void DdsModelsTest::ad9951LosesSync()
{
    Ad9951Model model(400e6);
    clockBit(model, false); // one clock too many
    for (const int byte : {0x04, 0x06, 0x66, 0x66, 0x66})
        sendByte(model, byte);
    pulseUpdate(model);
    QVERIFY(model.violated(DdsViolation::LostSync));
    QVERIFY(model.active(4) != 0x06666666U);
    model.drive({false, false, false, true});
    model.drive({});
    for (const int byte : {0x04, 0x06, 0x66, 0x66, 0x66})
        sendByte(model, byte);
    pulseUpdate(model);
    QCOMPARE(model.active(4), 0x06666666U);
}

void DdsModelsTest::ad9850NeverSeesAFactoryBit()
{
    SimulatorSettings settings = unpacedSettings();
    SimulatedParallelPort board(settings);
    ParallelPins pins(board);
    DdsLoader loader(pins);
    const DdsClock clock{DdsChip::Ad9850, 80e6, 6}; // the AD9850 has no multiplier and must ignore the 6
    loader.startUp(clock, 0xFFFFFFFFU);
    for (int index = 0; index < 20'000; ++index) {
        const auto word = static_cast<std::uint32_t>(index) * 2654435761U;
        loader.load(clock, word);
        QCOMPARE(static_cast<const Ad985xModel &>(board.dds()).word(), word);
    }
    QCOMPARE(board.dds().violations(), 0U);
}

QTEST_APPLESS_MAIN(DdsModelsTest)
#include "dds_models.moc"
