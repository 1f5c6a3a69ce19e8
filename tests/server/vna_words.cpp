// SPDX-License-Identifier: MIT
// Tests the bytes sent to the MiniVNA and the decoding of its replies.
#include "server/drivers/vna_protocol.h"
#include "server/synthesiser/dds_clock.h"
#include "server/synthesiser/tuning_word.h"
#include "server/synthesiser/vna_word.h"

#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {
constexpr std::uint64_t kClockHz = 400'000'000;
}

class VnaWordsTest : public QObject
{
    Q_OBJECT

private slots:
    void words_data();
    void words();
    void sweepCommand();
    void descendingSweep();
    void wordsThatDoNotFit();
    void generatorCommands();
    void samplesInAnyPieces();
    void countsAboveTenBits_data();
    void countsAboveTenBits();
    void tooManyBytes();
};

void VnaWordsTest::words_data()
{
    QTest::addColumn<qint64>("hertz");
    QTest::addColumn<quint32>("word");
    QTest::newRow("0.1 MHz") << qint64{100'000} << quint32{1'073'742};
    QTest::newRow("1 MHz") << qint64{1'000'000} << quint32{10'737'418};
    QTest::newRow("7 MHz") << qint64{7'000'000} << quint32{75'161'928};
    QTest::newRow("10 MHz") << qint64{10'000'000} << quint32{107'374'182};
    QTest::newRow("14.175 MHz") << qint64{14'175'000} << quint32{152'202'904};
    QTest::newRow("180 MHz") << qint64{180'000'000} << quint32{1'932'735'283};
}

void VnaWordsTest::words()
{
    QFETCH(qint64, hertz);
    QFETCH(quint32, word);
    QCOMPARE(tuningWord(hertz, 0.0, kClockHz), word);
    QCOMPARE(vnaSweepWords(hertz, 0, 400, 0.0, kClockHz), (VnaSweepWords{word, 0, false}));
}

void VnaWordsTest::sweepCommand()
{
    // The step is 450,877.19 Hz. Its word is 4841255 for the whole hertz, and the fraction adds 2 units.
    const QByteArray bytes = vnaCommandText({VnaCommand::Path::Reflection, 1'073'742, 400, 4'841'257});
    QCOMPARE(bytes, QByteArray::fromHex("300D313037333734320D3430300D343834313235370D"));
    QCOMPARE(bytes.size(), 22);
    QCOMPARE(std::lround(450'877.19298 * 4'294'967'296.0 / kClockHz), 4'841'257L);
    const double lastHz = (1'073'742.0 + 399.0 * 4'841'257.0) * kClockHz / 4'294'967'296.0;
    QVERIFY(std::fabs(lastHz - 180'000'000.168) < 0.001);
    QCOMPARE(vnaSweepWords(100'000, 450'877, 400, 0.0, kClockHz), (VnaSweepWords{1'073'742, 4'841'255, false}));
    // The offset changes the start only.
    QCOMPARE(vnaSweepWords(99'000, 450'877, 400, 1'000.0, kClockHz), (VnaSweepWords{1'073'742, 4'841'255, false}));
}

void VnaWordsTest::descendingSweep()
{
    const VnaSweepWords down = vnaSweepWords(10'000'000, -20'000, 400, 0.0, kClockHz);
    // The words for 2,020,000 Hz and 20,000 Hz.
    QCOMPARE(down, (VnaSweepWords{21'689'585, 214'748, true}));
}

void VnaWordsTest::wordsThatDoNotFit()
{
    QVERIFY_THROWS_EXCEPTION(FrequencyError, vnaSweepWords(399'000'000, 10'000, 400, 0.0, kClockHz));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, vnaSweepWords(1'000, -10'000, 400, 0.0, kClockHz));
    QVERIFY_THROWS_EXCEPTION(FrequencyError, vnaSweepWords(1'000, 10, 400, -2'000.0, kClockHz));
    // Above half the clock the generator outputs its image, which is allowed.
    QCOMPARE(vnaSweepWords(300'000'000, 0, 400, 0.0, kClockHz).start, 3'221'225'472U);
}

void VnaWordsTest::generatorCommands()
{
    QCOMPARE(vnaCommandText(vnaGeneratorCommand(0)), QByteArray("0\r0\r1\r0\r"));
    QCOMPARE(vnaCommandText(vnaGeneratorCommand(107'374'182)), QByteArray("0\r107374182\r1\r0\r"));
}

void VnaWordsTest::samplesInAnyPieces()
{
    const QByteArray bytes = QByteArray::fromHex("FF012C03"
                                                 "00000000"
                                                 "FF03FF03");
    const QList<VnaSample> expected{{511, 812}, {0, 0}, {1023, 1023}};
    for (int piece = 1; piece <= bytes.size(); ++piece) {
        VnaReply reply(3);
        QCOMPARE(reply.state(), VnaReply::State::Incomplete);
        for (int at = 0; at < bytes.size(); at += piece) {
            const bool last = at + piece >= bytes.size();
            QCOMPARE(reply.take(bytes.mid(at, piece)), last ? VnaReply::State::Complete : VnaReply::State::Incomplete);
        }
        QCOMPARE(reply.samples(), expected);
    }
}

void VnaWordsTest::countsAboveTenBits_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("phase") << QByteArray::fromHex("00042C03");
    QTest::newRow("magnitude") << QByteArray::fromHex("FF012C83");
}

void VnaWordsTest::countsAboveTenBits()
{
    QFETCH(QByteArray, bytes);
    VnaReply reply(2);
    QCOMPARE(reply.take(bytes), VnaReply::State::Broken);
    QCOMPARE(reply.take(QByteArray(4, '\0')), VnaReply::State::Broken);
}

void VnaWordsTest::tooManyBytes()
{
    VnaReply atOnce(1);
    QCOMPARE(atOnce.take(QByteArray(5, '\0')), VnaReply::State::Broken);
    VnaReply later(1);
    QCOMPARE(later.take(QByteArray(4, '\0')), VnaReply::State::Complete);
    QCOMPARE(later.take(QByteArray(1, '\0')), VnaReply::State::Broken);
}

QTEST_GUILESS_MAIN(VnaWordsTest)
#include "vna_words.moc"
