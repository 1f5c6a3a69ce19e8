// SPDX-License-Identifier: MIT
// Tests the tuning words: rounded to nearest, exact to the last bit, and rejected only if they exceed 32 bits.
#include "server/synthesiser/tuning_word.h"

#include <QTest>

using namespace calvorn;

class TuningWordTest : public QObject
{
    Q_OBJECT

private slots:
    void words_data();
    void words();
    void offsetCountsInMicrohertz();
    void aboveNyquistIsLegal();
    void whatDoesNotFitIsRefused();
    void systemClocks_data();
    void systemClocks();
    void crystalMustBePositive();
};

void TuningWordTest::words_data()
{
    QTest::addColumn<qint64>("hertz");
    QTest::addColumn<quint64>("clock");
    QTest::addColumn<quint32>("word");

    constexpr quint64 kClocks[] = {125'000'000, 80'000'000, 180'000'000, 30'000'000, 400'000'000};
    struct Row
    {
        qint64 hertz;
        quint32 words[5]; // 0: above half the clock, not in the table
    };
    constexpr Row kRows[] = {
        {1, {0x00000022, 0x00000036, 0x00000018, 0x0000008F, 0x0000000B}},
        {1'000, {0x00008638, 0x0000D1B7, 0x00005D35, 0x00022F3E, 0x000029F1}},
        {1'000'000, {0x020C49BA, 0x03333333, 0x016C16C1, 0x08888889, 0x00A3D70A}},
        {7'000'000, {0x0E560419, 0x16666666, 0x09F49F4A, 0x3BBBBBBC, 0x047AE148}},
        {10'000'000, {0x147AE148, 0x20000000, 0x0E38E38E, 0x55555555, 0x06666666}},
        {14'200'000, {0x1D14E3BD, 0x2D70A3D7, 0x14320FEE, 0x792C5F93, 0x0916872B}},
        {30'000'000, {0x3D70A3D7, 0x60000000, 0x2AAAAAAB, 0, 0x13333333}},
        {40'000'000, {0x51EB851F, 0, 0x38E38E39, 0, 0x1999999A}},
        {60'000'000, {0x7AE147AE, 0, 0x55555555, 0, 0x26666666}},
    };
    for (const Row &row : kRows) {
        for (int column = 0; column < 5; ++column) {
            if (row.words[column] != 0)
                QTest::addRow("%lld Hz at %llu", row.hertz, kClocks[column])
                    << row.hertz << kClocks[column] << row.words[column];
        }
    }
}

void TuningWordTest::words()
{
    QFETCH(qint64, hertz);
    QFETCH(quint64, clock);
    QFETCH(quint32, word);
    QCOMPARE(tuningWord(hertz, 0.0, clock), word);
}

void TuningWordTest::offsetCountsInMicrohertz()
{
    // With this clock the word changes by one per 1e-7 Hz, so a microhertz changes it by ten.
    constexpr quint64 kClock = 430;       // resolution 1.0012e-7 Hz
    constexpr quint32 base = 998'829'604; // 100 * 2^32 / 430 is 998,829,603.72
    QCOMPARE(tuningWord(100, 1e-6, kClock), base + 10);
    QCOMPARE(tuningWord(100, -1e-6, kClock), base - 10);
    QCOMPARE(tuningWord(9'999'000, 1'000.0, 125'000'000), 0x147AE148U);
    QCOMPARE(tuningWord(10'001'000, -1'000.0, 125'000'000), 0x147AE148U);
}

void TuningWordTest::aboveNyquistIsLegal()
{
    QCOMPARE(tuningWord(40'000'000, 0.0, 80'000'000), 0x80000000U);
    QCOMPARE(tuningWord(60'000'000, 0.0, 80'000'000), 0xC0000000U);
    QCOMPARE(tuningWord(79'999'999, 0.0, 80'000'000), 0xFFFFFFCAU);
    QCOMPARE(tuningWord(0, 0.0, 80'000'000), 0U);
}

void TuningWordTest::whatDoesNotFitIsRefused()
{
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(80'000'000, 0.0, 80'000'000));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(2'147'483'647, 0.0, 400'000'000));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(-1, 0.0, 80'000'000));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(10, -10.5, 80'000'000));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(10, qQNaN(), 80'000'000));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(10, 1e300, 80'000'000));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, tuningWord(10, 0.0, 0));
    try {
        tuningWord(90'000'000, 0.0, 80'000'000);
        QFAIL("not refused");
    } catch (const FrequencyError &error) {
        QCOMPARE(QString::fromUtf8(error.what()),
                 QStringLiteral("The frequency 90000000 Hz cannot be generated with a system clock of 80000000 Hz."));
    }
}

void TuningWordTest::systemClocks_data()
{
    QTest::addColumn<QString>("chip");
    QTest::addColumn<double>("xtal");
    QTest::addColumn<int>("multiplier");
    QTest::addColumn<quint64>("clock");
    QTest::newRow("AD9850") << "AD9850" << 125e6 << 1 << quint64{125'000'000};
    QTest::newRow("AD9850, multiplied before the chip") << "AD9850" << 20e6 << 4 << quint64{80'000'000};
    QTest::newRow("AD9850, no multiplier") << "AD9850" << 80e6 << 0 << quint64{80'000'000};
    QTest::newRow("AD9851 x6") << "AD9851" << 30e6 << 6 << quint64{180'000'000};
    QTest::newRow("AD9851 x1") << "AD9851" << 30e6 << 1 << quint64{30'000'000};
    QTest::newRow("AD9851 has no x4") << "AD9851" << 30e6 << 4 << quint64{30'000'000};
    QTest::newRow("AD9951 x3 is bypass") << "AD9951" << 100e6 << 3 << quint64{100'000'000};
    QTest::newRow("AD9951 x4") << "AD9951" << 100e6 << 4 << quint64{400'000'000};
    QTest::newRow("AD9951 x20") << "AD9951" << 20e6 << 20 << quint64{400'000'000};
    QTest::newRow("AD9951 x21 is bypass") << "AD9951" << 20e6 << 21 << quint64{20'000'000};
    QTest::newRow("a double that is not quite whole") << "AD9850" << 79'999'999.99999999 << 1 << quint64{80'000'000};
}

void TuningWordTest::systemClocks()
{
    QFETCH(QString, chip);
    QFETCH(double, xtal);
    QFETCH(int, multiplier);
    QFETCH(quint64, clock);
    const auto known = ddsChipFromName(chip);
    QVERIFY(known.has_value());
    QCOMPARE(systemClockHz({*known, xtal, multiplier}), clock);
}

void TuningWordTest::crystalMustBePositive()
{
    for (const double xtal : {0.0, -80e6, qQNaN(), qInf()})
        QVERIFY_THROWS_EXCEPTION(FrequencyError, systemClockHz({DdsChip::Ad9850, xtal, 1}));
    QVERIFY(!ddsChipFromName(QStringLiteral("AD9852")).has_value());
    QVERIFY(!ddsChipFromName(QString()).has_value());
}

QTEST_APPLESS_MAIN(TuningWordTest)
#include "tuning_word.moc"
