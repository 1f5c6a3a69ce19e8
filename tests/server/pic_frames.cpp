// SPDX-License-Identifier: MIT
#include "server/drivers/pic_frames.h"

#include "tests/support/pic_frame.h"

#include <QTest>

#include <algorithm>
#include <random>

using namespace calvorn;
using calvorn::test::crcOf;
using calvorn::test::kPicFramePlan;
using calvorn::test::picFrame;

namespace {

constexpr int kPoints = 400;
constexpr int kFrameBytes = 505;
constexpr PicPlan kPlan{8'980'000, 100}; // the plan that picFrame() uses

QList<int> someSamples(unsigned seed)
{
    std::minstd_rand random(seed);
    QList<int> samples;
    for (int index = 0; index < kPoints; ++index)
        samples.append(static_cast<int>(random() % 1024));
    return samples;
}

// The decoder accepts a frame only if sync bytes follow.
const QByteArray kFollowing = QByteArray::fromHex("a55a");

} // namespace

// Tests decoding over a noisy line: only damaged frames are lost, and no damaged frame is accepted.
class PicFrames : public QObject
{
    Q_OBJECT

private slots:
    void checkValueOfTheCrc();
    void anotherPlanIsDamage();
    void samplesArePackedFromTheTop();
    void framesArriveInPieces();
    void anEarlierSyncIsNoTrap();
    void missingFramesAreTold();
    void remnantsAreNotShown();
    void damagedFirstFrames();
    void oneByteDamage_data();
    void oneByteDamage();
    void onlyAFollowedFrameIsGood_data();
    void onlyAFollowedFrameIsGood();
    void randomBytesAreNoFrame();
};

void PicFrames::checkValueOfTheCrc()
{
    QCOMPARE(crcOf("123456789"), std::uint16_t(0x29B1));
    // The decoder accepts only the correct checksum.
    const QByteArray frame = picFrame(0, someSamples(1));
    const int right = crcOf(kPicFramePlan + frame.mid(2, 501));
    for (int flipped = 0; flipped <= 0xFFFF; flipped += 51) {
        const int sum = right ^ flipped;
        QByteArray other = frame;
        other[503] = static_cast<char>(sum >> 8);
        other[504] = static_cast<char>(sum & 0xFF);
        PicDecoder decoder(kPlan);
        decoder.take(other + kFollowing);
        const auto sweep = decoder.next();
        QVERIFY(sweep);
        QCOMPARE(!sweep->isDamaged(), flipped == 0);
    }
}

// Checks the examples in docs/hardware/pic-board.md and frames from a board that sweeps the wrong plan.
void PicFrames::anotherPlanIsDamage()
{
    QCOMPARE(crcOf(kPicFramePlan), std::uint16_t(0x187C));
    QCOMPARE(crcOf(QByteArray::fromHex("00989680 fffff63c")), std::uint16_t(0x95FC));
    const QByteArray falling = picFrame(0, someSamples(1), QByteArray::fromHex("00989680 fffff63c")) + kFollowing;
    PicDecoder same({10'000'000, -2'500});
    same.take(falling);
    QCOMPARE(same.next().value().samples, someSamples(1));
    for (const PicPlan &plan : {PicPlan{10'000'000, 2'500}, PicPlan{10'000'001, -2'500}, PicPlan{0, 0}, kPlan}) {
        PicDecoder other(plan);
        other.take(falling);
        QVERIFY(other.next().value().isDamaged());
        QVERIFY(!other.next());
    }
}

void PicFrames::samplesArePackedFromTheTop()
{
    QList<int> samples(kPoints, 0);
    samples[0] = 0x3FF;
    samples[1] = 0x001;
    samples[2] = 0x155;
    samples[3] = 0x2AA;
    const QByteArray frame = picFrame(7, samples);
    QCOMPARE(frame.size(), kFrameBytes);
    QCOMPARE(frame.left(8).toHex(), QByteArray("a55a07ffc01556aa"));
    PicDecoder decoder(kPlan);
    decoder.take(picFrame(0, samples) + kFollowing);
    QCOMPARE(decoder.next()->samples, samples);
}

void PicFrames::framesArriveInPieces()
{
    const QByteArray line = picFrame(0, someSamples(1)) + picFrame(1, someSamples(2)) + kFollowing;
    PicDecoder decoder(kPlan);
    QList<QList<int>> sweeps;
    for (const char byte : line) {
        decoder.take(QByteArray(1, byte));
        while (const auto sweep = decoder.next())
            sweeps.append(sweep->samples);
    }
    QCOMPARE(sweeps, (QList<QList<int>>{someSamples(1), someSamples(2)}));
}

void PicFrames::anEarlierSyncIsNoTrap()
{
    PicDecoder decoder(kPlan);
    decoder.take(QByteArray::fromHex("a55aa5") + picFrame(0, someSamples(1)) + picFrame(1, someSamples(2)) +
                 kFollowing);
    QVERIFY(decoder.next()->isDamaged());
    QCOMPARE(decoder.next()->samples, someSamples(1));
    QCOMPARE(decoder.next()->samples, someSamples(2));
    QVERIFY(!decoder.next());
}

void PicFrames::missingFramesAreTold()
{
    PicDecoder decoder(kPlan);
    for (unsigned number = 0; number <= 256; ++number)
        decoder.take(picFrame(static_cast<std::uint8_t>(number), someSamples(number)));
    decoder.take(picFrame(2, someSamples(258)) + kFollowing);
    for (unsigned number = 0; number <= 256; ++number)
        QCOMPARE(decoder.next()->samples, someSamples(number));
    QVERIFY(decoder.next()->isDamaged());
    QCOMPARE(decoder.next()->samples, someSamples(258));
}

// A complete frame left over from the previous sweep must not be shown.
void PicFrames::remnantsAreNotShown()
{
    PicDecoder decoder(kPlan);
    decoder.take(picFrame(57, someSamples(1)).right(200) + picFrame(58, someSamples(2)) + picFrame(1, someSamples(3)) +
                 picFrame(0, someSamples(4)) + picFrame(1, someSamples(5)) + kFollowing);
    QVERIFY(decoder.next()->isDamaged());
    QVERIFY(decoder.next()->isDamaged());
    QCOMPARE(decoder.next()->samples, someSamples(4));
    QCOMPARE(decoder.next()->samples, someSamples(5));
    QVERIFY(!decoder.next());
}

// The first frames of a sweep may be damaged, too.
void PicFrames::damagedFirstFrames()
{
    for (unsigned damaged = 1; damaged <= 3; ++damaged) {
        PicDecoder decoder(kPlan);
        for (unsigned number = 0; number < damaged; ++number)
            decoder.take(
                picFrame(static_cast<std::uint8_t>(number), someSamples(number)).remove(qsizetype{100} + number, 1));
        decoder.take(picFrame(static_cast<std::uint8_t>(damaged), someSamples(9)) + kFollowing);
        unsigned told = 0;
        auto sweep = decoder.next();
        for (; sweep && sweep->isDamaged(); sweep = decoder.next())
            ++told;
        QVERIFY(told >= 1 && told <= damaged);
        QVERIFY(sweep);
        QCOMPARE(sweep->samples, someSamples(9));
    }
}

void PicFrames::oneByteDamage_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("lost") << 0;
    QTest::newRow("added") << 1;
    QTest::newRow("flipped") << 2;
}

void PicFrames::oneByteDamage()
{
    QFETCH(int, kind);
    const QList<QList<int>> sent = {someSamples(1), someSamples(2), someSamples(3), someSamples(4)};
    QByteArray line;
    for (int index = 0; index < 4; ++index)
        line += picFrame(static_cast<std::uint8_t>(index), sent[index]);
    line += kFollowing;
    for (int position = 0; position < 2 * kFrameBytes; ++position) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray bad = line;
            if (kind == 0)
                bad.remove(position, 1);
            else if (kind == 1)
                bad.insert(position, static_cast<char>(1 << bit));
            else
                bad[position] = static_cast<char>(bad[position] ^ (1 << bit));
            PicDecoder decoder(kPlan);
            decoder.take(bad);
            QList<QList<int>> good;
            while (const auto sweep = decoder.next()) {
                if (!sweep->isDamaged())
                    good.append(sweep->samples);
            }
            QList<QList<int>> spared = sent;
            spared.removeAt(position / kFrameBytes);
            // A byte inserted between two frames damages at most one of them.
            QList<QList<int>> former = sent;
            former.removeAt(std::max(0, position / kFrameBytes - 1));
            const bool isBetween = kind == 1 && position % kFrameBytes == 0;
            QVERIFY2(good == spared || (isBetween && (good == former || good == sent)),
                     qPrintable(QString::number(position)));
            if (kind == 0)
                break;
        }
    }
}

void PicFrames::onlyAFollowedFrameIsGood_data()
{
    QTest::addColumn<QByteArray>("behind");
    QTest::addColumn<bool>("good");
    QTest::newRow("both sync bytes") << QByteArray::fromHex("a55a") << true;
    QTest::newRow("the second one damaged") << QByteArray::fromHex("a500") << true;
    QTest::newRow("the first one damaged") << QByteArray::fromHex("005a") << true;
    QTest::newRow("the first one lost") << QByteArray::fromHex("5a00") << true;
    QTest::newRow("neither") << QByteArray::fromHex("0000") << false;
    QTest::newRow("one place too late") << QByteArray::fromHex("00a5") << false;
}

// A correct checksum is not enough: one damaged frame in 65,536 has a correct checksum by chance.
void PicFrames::onlyAFollowedFrameIsGood()
{
    QFETCH(QByteArray, behind);
    QFETCH(bool, good);
    const QByteArray frame = picFrame(0, someSamples(1));
    QVERIFY(!frame.endsWith('\xA5'));
    PicDecoder decoder(kPlan);
    decoder.take(frame);
    QVERIFY(!decoder.next()); // waits for the following bytes
    decoder.take(behind.left(1));
    QVERIFY(!decoder.next());
    decoder.take(behind.mid(1));
    const auto sweep = decoder.next();
    QVERIFY(sweep);
    QCOMPARE(!sweep->isDamaged(), good);
}

void PicFrames::randomBytesAreNoFrame()
{
    std::mt19937 random(11);
    QByteArray noise;
    for (int count = 0; count < 10'000; ++count)
        noise += static_cast<char>(random());
    PicDecoder decoder(kPlan);
    decoder.take(noise + picFrame(0, someSamples(1)) + kFollowing);
    int damaged = 0;
    QList<QList<int>> good;
    while (const auto sweep = decoder.next()) {
        if (sweep->isDamaged())
            ++damaged;
        else
            good.append(sweep->samples);
    }
    QCOMPARE(good, QList<QList<int>>{someSamples(1)});
    QVERIFY2(damaged <= 10'000 / kFrameBytes + 1, qPrintable(QString::number(damaged)));
}

QTEST_GUILESS_MAIN(PicFrames)
#include "pic_frames.moc"
