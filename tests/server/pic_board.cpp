// SPDX-License-Identifier: MIT
// Tests the simulated PIC board against the firmware rules in docs/hardware/pic-board.md.
#include "tests/support/pic_probe.h"
#include "tests/support/tuning_word.h"

#include "server/drivers/pic_frames.h"

#include <QTest>

#include <cmath>
#include <cstdlib>
#include <random>

using namespace calvorn;
using calvorn::test::ProbedPic;
using calvorn::test::say;

namespace {

constexpr std::uint64_t kClockHz = 125'000'000;

SimulatorSettings settings()
{
    SimulatorSettings made;
    made.clockHz = static_cast<double>(kClockHz);
    return made;
}

} // namespace

class PicBoardTest : public QObject
{
    Q_OBJECT

private slots:
    void theExample();
    void answers_data();
    void answers();
    void abortVoidsACommand();
    void abortEndsASweep();
    void sequenceNumbers();
    void theHostTakesItsFrames();
    void aStaleBoardIsFoundOut();
    void slowSettlingKeepsTheLineWaiting();
    void wordsAreWithinOneUnit();
    void lastWordOfADescendingSweep();
};

void PicBoardTest::theExample()
{
    PicBoard board(settings());
    QCOMPARE(say(board, QByteArray::fromHex("4238393830303030 0D")), QByteArray("B+\r"));
    QCOMPARE(say(board, QByteArray::fromHex("443130300D")), QByteArray("D+\r"));
    QCOMPARE(say(board, QByteArray::fromHex("500D")), QByteArray("P+\r"));
    QCOMPARE(say(board, QByteArray::fromHex("470D"), 6).toHex(), QByteArray("472b0da55a00"));
    QCOMPARE(say(board, QByteArray::fromHex("21")).toHex(), QByteArray("212b0d"));
}

void PicBoardTest::answers_data()
{
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](const char *said, const char *answer) {
        QTest::newRow(said) << QByteArray(said) + '\r' << QByteArray(answer);
    };
    row("", "");
    row("A7000000", "A+\r");
    row("A0", "A+\r");
    row("A124999999", "A+\r");
    row("A125000000", "A-\r");
    row("A-1", "A-\r");
    row("A-0", "A-\r");
    row("D-0", "D+\r");
    row("D", "D-\r");
    row("D-", "D-\r");
    row("D--1", "D-\r");
    row("?", "?+CALVORN-SIM 1.0 AD9850 125000000 50\r");
    row("?1", "?-\r");
    row("S20", "S+\r");
    row("S10000\r?", "S+\r?+CALVORN-SIM 1.0 AD9850 125000000 10000\r");
    row("S19", "S-\r");
    row("S10001", "S-\r");
    row("S", "S-\r");
    row("S-50", "S-\r");
    row("S200\r*\r?", "S+\r*+\r?+CALVORN-SIM 1.0 AD9850 125000000 200\r");
    row("*5", "*-\r");
    row("A", "A-\r");
    row("Aseven", "A-\r");
    row("B124999999", "B+\r");
    row("B-1", "B-\r");
    row("D-124999999", "D+\r");
    row("D-125000000", "D-\r");
    row("P1", "P-\r");
    row("G", "G-\r");
    row("*", "*+\r");
    row("Z", "Z-\r");
    row("A00000000007", "A+\r");  // 12 characters
    row("A000000000007", "A-\r"); // 13
    row("A0000000000000000000000000000000000000000000007", "A-\r");
    row("B100\rD-1\rP\rG", "B+\rD+\rP-\rG-\r"); // the last point is negative
    row("B124999000\rD10\rP", "B+\rD+\rP-\r");
    row("B1000\rD10\rP\r*\rG", "B+\rD+\rP+\r*+\rG-\r");
    row("B1000\rD10\rP\rD11\rG", "B+\rD+\rP+\rD+\rG-\r");
    row("B1000\rD10\rP\rB-1\rG", "B+\rD+\rP+\rB-\rG-\r");
    row("B1000\rD10\rP\r*1\rG", "B+\rD+\rP+\r*-\rG-\r");
    row("B1000\rD10\rP\rP1\rG", "B+\rD+\rP+\rP-\rG-\r");
}

void PicBoardTest::answers()
{
    QFETCH(QByteArray, said);
    QFETCH(QByteArray, answer);
    PicBoard board(settings());
    QCOMPARE(say(board, said), answer);
}

void PicBoardTest::abortVoidsACommand()
{
    PicBoard board(settings());
    QCOMPARE(say(board, "A70!"), QByteArray("!+\r"));
    QCOMPARE(say(board, "\r"), QByteArray());
    QCOMPARE(say(board, "A7\r"), QByteArray("A+\r"));
}

// `!` aborts the sweep, even in mid-frame, and silences the board. During a sweep the board ignores other bytes.
void PicBoardTest::abortEndsASweep()
{
    PicBoard board(settings());
    QCOMPARE(say(board, "B1000\rD10\rP\r"), QByteArray("B+\rD+\rP+\r"));
    QCOMPARE(say(board, "G\r", 250).size(), 250);
    QVERIFY(!say(board, "A7\r", 100).contains("A+\r"));
    QCOMPARE(say(board, {}, 1'000).size(), 1'000); // still sweeping
    QCOMPARE(say(board, "!"), QByteArray("!+\r"));
    QCOMPARE(say(board, {}), QByteArray());
}

void PicBoardTest::sequenceNumbers()
{
    PicBoard board(settings());
    say(board, "B1000\rD10\rP\r");
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(say(board, "G\r", 3), QByteArray("G+\r"));
        for (int frame = 0; frame < 258; ++frame) {
            const QByteArray bytes = say(board, {}, test::kPicFrameBytes);
            QCOMPARE(bytes.left(2).toHex(), QByteArray("a55a"));
            QCOMPARE(static_cast<std::uint8_t>(bytes.at(2)), static_cast<std::uint8_t>(frame));
        }
        say(board, "!");
    }
}

// The simulated board and the decoder compute the checksum independently.
void PicBoardTest::theHostTakesItsFrames()
{
    PicBoard board(settings());
    say(board, "B8980000\rD100\rP\r");
    QCOMPARE(say(board, "G\r", 3), QByteArray("G+\r"));
    PicDecoder host({8'980'000, 100});
    host.take(say(board, {}, 2 * test::kPicFrameBytes + 2)); // two frames and the sync bytes of the third
    for (int frame = 0; frame < 2; ++frame) {
        const auto sweep = host.next();
        QVERIFY(sweep);
        QVERIFY(!sweep->isDamaged());
    }
}

// A stale board accepts the second plan but keeps sweeping the first.
void PicBoardTest::aStaleBoardIsFoundOut()
{
    SimulatorSettings stale = settings();
    stale.fault = SimulatorFault::Stale;
    PicBoard board(stale);
    QCOMPARE(say(board, "B8980000\rD100\rP\rB9000000\rD200\rP\r"), QByteArray("B+\rD+\rP+\rB+\rD+\rP+\r"));
    QCOMPARE(say(board, "G\r", 3), QByteArray("G+\r"));
    const QByteArray line = say(board, {}, test::kPicFrameBytes + 2);
    PicDecoder wanted({9'000'000, 200});
    wanted.take(line);
    QVERIFY(wanted.next().value().isDamaged());
    PicDecoder kept({8'980'000, 100});
    kept.take(line);
    QVERIFY(!kept.next().value().isDamaged());
}

// Four samples occupy five bytes, which take 0.43 ms at 115,200 baud.
void PicBoardTest::slowSettlingKeepsTheLineWaiting()
{
    const auto idleTime = [](const QByteArray &settling) {
        PicBoard board(settings());
        say(board, settling + "B8980000\rD100\rP\r");
        say(board, "G\r", 3);
        std::chrono::nanoseconds sum{};
        for (int byte = 0; byte < test::kPicFrameBytes; ++byte) {
            board.nextByte();
            sum += board.idleTime();
        }
        return std::chrono::duration<double, std::milli>(sum).count();
    };
    QCOMPARE(idleTime({}), 0.0);
    QCOMPARE(idleTime("S20\r"), 0.0);
    QCOMPARE(idleTime("S1000\r"), 400 * 0.950); // the line is busy during 50 us of each settling time
}

void PicBoardTest::wordsAreWithinOneUnit()
{
    ProbedPic board(settings());
    std::mt19937 random(3);
    for (int count = 0; count < 20'000; ++count) {
        const auto hertz = static_cast<std::int64_t>(random() % kClockHz);
        QCOMPARE(say(board, "A" + QByteArray::number(qint64{hertz}) + '\r'), QByteArray("A+\r"));
        QVERIFY2(std::llabs(test::exactWord(hertz) - board.words.back()) <= 1, qPrintable(QString::number(hertz)));
    }
}

void PicBoardTest::lastWordOfADescendingSweep()
{
    ProbedPic board(settings());
    say(board, "B10000000\rD-25000\rP\r");
    say(board, "G\r", 3 + test::kPicFrameBytes);
    QCOMPARE(board.words.size(), std::size_t{400});
    for (int point = 0; point < 400; ++point) {
        const std::int64_t exact = test::exactWord(10'000'000 - 25'000 * point);
        QVERIFY(std::llabs(exact - board.words[static_cast<std::size_t>(point)]) <= 1);
    }
}

QTEST_APPLESS_MAIN(PicBoardTest)
#include "pic_board.moc"
