// SPDX-License-Identifier: MIT
// Compares the bits on the parallel port's wires with the data sheets, both when loading the generator and in I2C
// transfers.
#include "server/drivers/dds_loader.h"
#include "server/drivers/i2c_master.h"
#include "server/links/parallel_pins.h"
#include "tests/server/recording_port.h"

#include <QTest>

using namespace calvorn;

namespace {

// Bits in the standard wiring.
constexpr unsigned kDdsClock = 0x01;
constexpr unsigned kDdsUpdate = 0x02;
constexpr unsigned kDdsData = 0x04;
constexpr unsigned kScl = 0x40;
constexpr unsigned kSda = 0x80;
constexpr std::uint8_t kNobodyAcknowledges = 0x10; // SELECT reads SDA as high

// Returns the data line at each rising clock edge, "|" for each pulse on the update line, and "?" for an update pulse
// while clock or data is high.
QByteArray loadedBits(const std::vector<std::uint8_t> &writes)
{
    QByteArray bits;
    unsigned before = 0;
    for (const unsigned now : writes) {
        const unsigned rising = now & ~before;
        if ((rising & kDdsClock) != 0)
            bits += (now & kDdsData) != 0 ? '1' : '0';
        if ((rising & kDdsUpdate) != 0)
            bits += (now & (kDdsClock | kDdsData)) == 0 ? '|' : '?';
        before = now;
    }
    return bits;
}

// Decodes an I2C transfer. "S" and "P" are START and STOP; a digit is the level to which the master sets SDA while SCL
// is high. The ninth digit is "1", because the master releases SDA for the acknowledge bit.
QByteArray busBits(const std::vector<std::uint8_t> &writes)
{
    QByteArray bits;
    unsigned before = kScl | kSda;
    for (const unsigned now : writes) {
        const bool clockStays = (before & now & kScl) != 0;
        if (clockStays && (before & ~now & kSda) != 0)
            bits += 'S';
        else if (clockStays && (now & ~before & kSda) != 0)
            bits.back() = 'P'; // replaces the bit that the rising clock added
        else if ((now & ~before & kScl) != 0)
            bits += (now & kSda) != 0 ? '1' : '0';
        before = now;
    }
    return bits;
}

} // namespace

class WireBitsTest : public QObject
{
    Q_OBJECT

private slots:
    void loads_data();
    void loads();
    void transfers_data();
    void transfers();
    void transferWithoutAcknowledge();
};

void WireBitsTest::loads_data()
{
    QTest::addColumn<int>("chip");
    QTest::addColumn<double>("xtal");
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<quint32>("word");
    QTest::addColumn<QByteArray>("bits");
    QTest::newRow("AD9850, 10 MHz at 125 MHz") << static_cast<int>(DdsChip::Ad9850) << 125e6 << 1 << 0x147AE148U
                                               << QByteArray("0001001010000111010111100010100000000000|");
    QTest::newRow("AD9850, 10 MHz at 80 MHz") << static_cast<int>(DdsChip::Ad9850) << 80e6 << 1 << 0x20000000U
                                              << QByteArray("0000000000000000000000000000010000000000|");
    QTest::newRow("AD9851, 10 MHz at 30 MHz x 6") << static_cast<int>(DdsChip::Ad9851) << 30e6 << 6 << 0x0E38E38EU
                                                  << QByteArray("0111000111000111000111000111000010000000|");
    QTest::newRow("AD9951, 10 MHz at 400 MHz") << static_cast<int>(DdsChip::Ad9951) << 400e6 << 1 << 0x06666666U
                                               << QByteArray("0000010000000110011001100110011001100110|");
}

void WireBitsTest::loads()
{
    QFETCH(int, chip);
    QFETCH(double, xtal);
    QFETCH(int, multiplier);
    QFETCH(quint32, word);
    QFETCH(QByteArray, bits);
    RecordingPort port;
    ParallelPins pins(port);
    DdsLoader loader(pins);
    loader.load({static_cast<DdsChip>(chip), xtal, multiplier}, word);
    QCOMPARE(loadedBits(port.data), bits);
}

void WireBitsTest::transfers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("bits");
    QTest::newRow("DS1803, first potentiometer")
        << QByteArray::fromHex("50A980") << QByteArray("S010100001101010011100000001P");
    QTest::newRow("DS1803, second potentiometer")
        << QByteArray::fromHex("50AA55") << QByteArray("S010100001101010101010101011P");
    QTest::newRow("DS1803, both") << QByteArray::fromHex("50AF80") << QByteArray("S010100001101011111100000001P");
    QTest::newRow("AD5245") << QByteArray::fromHex("580080") << QByteArray("S010110001000000001100000001P");
}

void WireBitsTest::transfers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, bits);
    RecordingPort port;
    ParallelPins pins(port);
    I2cMaster master(pins);
    const std::vector<std::uint8_t> sent(bytes.begin(), bytes.end());
    QVERIFY(master.write(sent));
    QCOMPARE(busBits(port.data), bits);
}

void WireBitsTest::transferWithoutAcknowledge()
{
    RecordingPort port;
    port.status = kNobodyAcknowledges;
    ParallelPins pins(port);
    I2cMaster master(pins);
    QVERIFY(!master.write(std::vector<std::uint8_t>{0x50, 0xA9, 0x80}));
    QCOMPARE(busBits(port.data), QByteArray("S010100001P"));
}

QTEST_APPLESS_MAIN(WireBitsTest)
#include "wire_bits.moc"
