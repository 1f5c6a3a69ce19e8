// SPDX-License-Identifier: MIT
// Tests the converter's one-frame delay, in the model and in the driver that reads the converter.
#include "server/boards/serial_adc_model.h"
#include "server/drivers/adc_reader.h"
#include "tests/server/recording_port.h"

#include <QTest>

using namespace calvorn;
using namespace std::chrono_literals;

namespace {

// A converter whose reference makes one count equal to one volt.
struct Bench
{
    explicit Bench(const SerialAdcType &made)
        : type(made)
    {
    }

    int frame(int extraClocks = 0)
    {
        now += 2us;
        model.drive(false, false, now);
        int value = 0;
        for (int bit = 0; bit < type.bits + extraClocks; ++bit) {
            value = value << 1 | (model.dataOut() ? 1 : 0);
            model.drive(false, true, now += 1us);
            model.drive(false, false, now += 1us);
        }
        model.drive(true, false, now);
        return value;
    }

    SerialAdcType type;
    double input = 0.0;
    std::chrono::nanoseconds now{};
    SerialAdcModel model{type, type.bits == 8 ? 256.0 : 1024.0, [this](auto) { return input; }};
};

// Connects the model to the port lines that the reader uses. An access takes 1.25 us.
class AdcPort : public ParallelPort
{
public:
    explicit AdcPort(Bench &bench)
        : m_bench(bench)
    {
    }
    void writeData(std::uint8_t value) override
    {
        m_bench.model.drive((value & 0x20) != 0, (value & 0x10) != 0, m_bench.now += 1250ns);
        ++accesses;
    }
    void writeControl(std::uint8_t) override {}
    void confirmPresent() override {}
    std::uint8_t readStatus() override
    {
        m_bench.now += 1250ns;
        ++accesses;
        return m_bench.model.dataOut() ? 0x40 : 0x00;
    }
    void wait(std::chrono::nanoseconds duration) override { m_bench.now += duration; }

    int accesses = 0;

private:
    Bench &m_bench;
};

void eachType()
{
    QTest::addColumn<int>("bits");
    QTest::newRow("8 bit") << 8;
    QTest::newRow("10 bit") << 10;
}

const SerialAdcType &typeOf(int bits)
{
    return bits == 8 ? kTlc549 : kTlc1549;
}

} // namespace

class SerialAdcTest : public QObject
{
    Q_OBJECT

private slots:
    void showsTheFrameBefore_data() { eachType(); }
    void showsTheFrameBefore();
    void conversionTakesItsTime_data() { eachType(); }
    void conversionTakesItsTime();
    void earlySelectAborts();
    void moreClocksGiveZeros();
    void inputIsClamped();
    void readerSeesTheInputOfNow_data() { eachType(); }
    void readerSeesTheInputOfNow();
};

void SerialAdcTest::showsTheFrameBefore()
{
    QFETCH(int, bits);
    Bench bench(typeOf(bits));
    bench.input = 100;
    bench.frame();
    bench.input = 200;
    bench.now += 25us;
    QCOMPARE(bench.frame(), 100);
    bench.now += 25us;
    QCOMPARE(bench.frame(), 200);
    QCOMPARE(bench.model.earlyFrames(), std::uint64_t{0});
}

void SerialAdcTest::conversionTakesItsTime()
{
    QFETCH(int, bits);
    const SerialAdcType &type = typeOf(bits);
    const auto conversionTime = bits == 8 ? 17us : 21us; // from the data sheets
    Bench bench(type);
    bench.input = 100;
    bench.frame();
    bench.now += conversionTime;
    bench.input = 50;
    QCOMPARE(bench.frame(), 100);
    QCOMPARE(bench.frame(), 100); // without a pause the frame returns the previous result
    QCOMPARE(bench.model.earlyFrames(), std::uint64_t{1});

    Bench justInTime(type);
    justInTime.input = 77;
    justInTime.frame();
    justInTime.now += conversionTime - 2us; // frame() waits 2 us before it selects the converter
    QCOMPARE(justInTime.frame(), 77);
}

void SerialAdcTest::earlySelectAborts()
{
    Bench bench(kTlc1549);
    bench.input = 300;
    bench.frame();
    bench.now += 25us;
    bench.input = 400;
    QCOMPARE(bench.frame(), 300);
    bench.now += 5us; // within 9 us of the tenth edge
    bench.input = 500;
    QCOMPARE(bench.frame(), 300);
    QCOMPARE(bench.model.aborted(), std::uint64_t{1});
    bench.now += 25us;
    QCOMPARE(bench.frame(), 500);
}

void SerialAdcTest::moreClocksGiveZeros()
{
    Bench bench(kTlc1549);
    bench.input = 1023;
    bench.frame();
    bench.now += 25us;
    QCOMPARE(bench.frame(4), 1023 << 4);
}

void SerialAdcTest::inputIsClamped()
{
    Bench bench(kTlc549);
    bench.input = 4000;
    bench.frame();
    bench.now += 25us;
    bench.input = -5;
    QCOMPARE(bench.frame(), 255);
    bench.now += 25us;
    QCOMPARE(bench.frame(), 0);
}

void SerialAdcTest::readerSeesTheInputOfNow()
{
    QFETCH(int, bits);
    Bench bench(typeOf(bits));
    AdcPort port(bench);
    ParallelPins pins(port);
    pins.set({{LptLine::AdcSelect, true}});
    port.accesses = 0;
    AdcReader reader(pins);
    for (const int input : {100, 200, 3, 255, 0, 128}) {
        bench.input = input;
        QCOMPARE(reader.read(typeOf(bits)), input);
        bench.now += 60us;
    }
    QCOMPARE(port.accesses, 6 * 2 * (bits == 8 ? 26 : 32));
    QCOMPARE(bench.model.earlyFrames(), std::uint64_t{0});
}

QTEST_APPLESS_MAIN(SerialAdcTest)
#include "serial_adc.moc"
