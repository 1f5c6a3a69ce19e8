// SPDX-License-Identifier: MIT
// Tests the data sent to the chips: 40-bit words for the AD985x and register bytes for the AD9951.
#include "server/synthesiser/ad985x_word.h"
#include "server/synthesiser/ad9951_registers.h"

#include <QTest>

using namespace calvorn;

namespace {

template <typename Bytes>
QByteArray hex(const Bytes &bytes)
{
    QByteArray raw;
    for (const std::uint8_t byte : bytes)
        raw.append(static_cast<char>(byte));
    return raw.toHex(' ').toUpper();
}

QByteArray bitString(std::uint64_t bits)
{
    QByteArray text;
    for (int bit = 0; bit < 40; ++bit)
        text.append((bits >> bit & 1U) != 0 ? '1' : '0');
    return text;
}

const DdsClock kAd9850{DdsChip::Ad9850, 125e6, 1};
const DdsClock kAd9851{DdsChip::Ad9851, 30e6, 6};

} // namespace

class ChipWordsTest : public QObject
{
    Q_OBJECT

private slots:
    void ad985x_data();
    void ad985x();
    void powerDown();
    void ad9850NeverGetsAFactoryBit();
    void cfr2_data();
    void cfr2();
    void cfr1AndFtw0();
};

void ChipWordsTest::ad985x_data()
{
    QTest::addColumn<int>("chip");
    QTest::addColumn<double>("xtal");
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<quint32>("word");
    QTest::addColumn<int>("phase");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("bits");
    const int chip50 = static_cast<int>(DdsChip::Ad9850);
    const int chip51 = static_cast<int>(DdsChip::Ad9851);
    QTest::newRow("AD9850 125 MHz") << chip50 << 125e6 << 1 << 0x147AE148U << 0 << QByteArray("00 14 7A E1 48")
                                    << QByteArray("0001001010000111010111100010100000000000");
    QTest::newRow("AD9850 truncated") << chip50 << 125e6 << 1 << 0x147AE147U << 0 << QByteArray("00 14 7A E1 47")
                                      << QByteArray("1110001010000111010111100010100000000000");
    QTest::newRow("AD9850 80 MHz") << chip50 << 80e6 << 1 << 0x20000000U << 0 << QByteArray("00 20 00 00 00")
                                   << QByteArray("0000000000000000000000000000010000000000");
    QTest::newRow("AD9851 x6") << chip51 << 30e6 << 6 << 0x0E38E38EU << 0 << QByteArray("01 0E 38 E3 8E")
                               << QByteArray("0111000111000111000111000111000010000000");
    QTest::newRow("AD9851 x6 with phase") << chip51 << 30e6 << 6 << 0x0E38E38EU << 1 << QByteArray("09 0E 38 E3 8E")
                                          << QByteArray("0111000111000111000111000111000010010000");
}

void ChipWordsTest::ad985x()
{
    QFETCH(int, chip);
    QFETCH(double, xtal);
    QFETCH(int, multiplier);
    QFETCH(quint32, word);
    QFETCH(int, phase);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, bits);
    const DdsClock clock{static_cast<DdsChip>(chip), xtal, multiplier};
    const Ad985xWord load = ad985xWord(clock, word, static_cast<std::uint8_t>(phase));
    QCOMPARE(hex(load.bytes()), bytes);
    QCOMPARE(bitString(load.serialBits()), bits);
}

void ChipWordsTest::powerDown()
{
    QCOMPARE(ad985xWord(kAd9850, 0, 0, true).control, std::uint8_t{0x04});
    QCOMPARE(ad985xWord(kAd9851, 0, 0, true).control, std::uint8_t{0x05});
}

void ChipWordsTest::ad9850NeverGetsAFactoryBit()
{
    for (int multiplier = -1; multiplier <= 21; ++multiplier) {
        for (int phase = 0; phase < 256; ++phase) {
            const DdsClock clock{DdsChip::Ad9850, 80e6, multiplier};
            const auto bits = ad985xWord(clock, 0xFFFFFFFFU, static_cast<std::uint8_t>(phase), true).serialBits();
            QCOMPARE(bits >> 32 & 3U, std::uint64_t{0});
            QVERIFY(bits >> 40 == 0);
        }
    }
}

void ChipWordsTest::cfr2_data()
{
    QTest::addColumn<double>("xtal");
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("400 MHz outside") << 400e6 << 1 << QByteArray("01 00 00 00");
    QTest::newRow("100 MHz x4") << 100e6 << 4 << QByteArray("01 00 00 24");
    QTest::newRow("80 MHz x5") << 80e6 << 5 << QByteArray("01 00 00 2C");
    QTest::newRow("40 MHz x10") << 40e6 << 10 << QByteArray("01 00 00 54");
    QTest::newRow("25 MHz x16") << 25e6 << 16 << QByteArray("01 00 00 84");
    QTest::newRow("20 MHz x20") << 20e6 << 20 << QByteArray("01 00 00 A4");
    QTest::newRow("lower VCO range up to 250 MHz") << 25e6 << 10 << QByteArray("01 00 00 50");
}

void ChipWordsTest::cfr2()
{
    QFETCH(double, xtal);
    QFETCH(int, multiplier);
    QFETCH(QByteArray, bytes);
    QCOMPARE(hex(ad9951Cfr2({DdsChip::Ad9951, xtal, multiplier})), bytes);
}

void ChipWordsTest::cfr1AndFtw0()
{
    QCOMPARE(hex(ad9951Cfr1()), QByteArray("00 00 00 02 00"));
    QCOMPARE(hex(ad9951Cfr1(true)), QByteArray("00 00 00 02 20"));
    QCOMPARE(hex(ad9951Ftw0(0x06666666U)), QByteArray("04 06 66 66 66"));
}

QTEST_APPLESS_MAIN(ChipWordsTest)
#include "chip_words.moc"
