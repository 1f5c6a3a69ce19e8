// SPDX-License-Identifier: MIT
// Tests the MiniVNA driver with noisy lines and faulty boards: the driver discards every detectably damaged sweep,
// continues sweeping if possible, otherwise stops with one aComplete, and survives the loss of the port.
#include "tests/server/vna_bench.h"
#include "tests/support/quiet_time.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <random>

using namespace calvorn;

namespace {

constexpr quint64 kReplyBytes = 1'600;
constexpr quint64 kCheckBytes = 20; // the reply to the line check, the first command on a link
constexpr quint64 kFaultyByte = 997;

// Returns how many vectors do not match any of the board's sweeps, sample for sample.
int wrongVectors(VnaBench &bench)
{
    int wrong = 0;
    const auto &made = bench.board.samples();
    for (qsizetype index = 0; index < bench.vectors.count(); ++index) {
        const QList<int> vector = bench.vector(index);
        bool found = false;
        for (std::size_t first = 0; !found && first + VnaBench::kPoints <= made.size(); first += VnaBench::kPoints) {
            found = std::equal(vector.begin(), vector.end(), made.begin() + static_cast<std::ptrdiff_t>(first),
                               [](int count, const VnaBoardSample &sample) { return count == sample.magnitude; });
        }
        wrong += found ? 0 : 1;
    }
    return wrong;
}

enum class Damage { Lost, Added, Flipped };

// Damages the byte at index `at`.
MemoryLink::Tamper damageOnce(Damage damage, quint64 at)
{
    return [damage, at](quint64 index, char byte) {
        if (index != at)
            return QByteArray(1, byte);
        switch (damage) {
        case Damage::Lost:
            return QByteArray();
        case Damage::Added:
            return QByteArray(1, byte) + QByteArray(1, '\x5A');
        case Damage::Flipped:
            break;
        }
        return QByteArray(1, static_cast<char>(byte ^ 0x10));
    };
}

} // namespace

class VnaFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void damagedOnce_data();
    void damagedOnce();
    void everyByteOfASweepLost();
    void damagedAgainAndAgain_data();
    void damagedAgainAndAgain();
    void silenceAfterTwoSweeps();
    void halfAReplyThenSilence();
    void stopWhileItIsSilent();
    void refusal();
    void generatorCommandWithoutAnAnswer();
    void unplugInMidSweep();
    void lossThatACommandFinds_data();
    void lossThatACommandFinds();
    void chatterWhenIdle();
    void chatterInFrontOfAReply();
    void endlessChatter();
    void garbageBeforeTheFirstAnswer();
};

void VnaFaultsTest::damagedOnce_data()
{
    QTest::addColumn<int>("damage");
    QTest::addColumn<int>("at");
    const QList<int> positions{0, 1, 2, 3, 4, 801, 1'500, 1'594, 1'596, 1'597, 1'598, 1'599};
    for (const int at : positions) {
        QTest::addRow("lost %d", at) << static_cast<int>(Damage::Lost) << at;
        QTest::addRow("added %d", at) << static_cast<int>(Damage::Added) << at;
        if (at % 2 != 0) // the driver cannot detect damage in the low byte of a count
            QTest::addRow("flipped %d", at) << static_cast<int>(Damage::Flipped) << at;
    }
}

// The damage is in the second of several sweeps: the driver reports that sweep, does not show it, and shows the others.
void VnaFaultsTest::damagedOnce()
{
    QFETCH(int, damage);
    QFETCH(int, at);
    VnaBench bench(vnaSettings(),
                   damageOnce(static_cast<Damage>(damage), kCheckBytes + kReplyBytes + static_cast<quint64>(at)));
    bench.board.recordSamples(10 * VnaBench::kPoints);
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= 4, 8'000);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kTransfer), 1);
    QCOMPARE(wrongVectors(bench), 0);
    QCOMPARE(bench.board.bytesWhileReplying(), std::uint64_t{0});
}

// Tests VnaReply directly: a reply with a lost or added byte anywhere never counts as complete.
void VnaFaultsTest::everyByteOfASweepLost()
{
    VnaBoard board(vnaSettings());
    for (const char byte : QByteArray("1\r10737418\r400\r241592\r"))
        board.receive(static_cast<std::uint8_t>(byte));
    QByteArray whole;
    while (const auto byte = board.nextByte())
        whole += static_cast<char>(*byte);
    QCOMPARE(whole.size(), qsizetype{kReplyBytes});
    for (qsizetype at = 0; at < whole.size(); ++at) {
        VnaReply shorter(400);
        QVERIFY(shorter.take(QByteArray(whole).remove(at, 1)) != VnaReply::State::Complete);
        VnaReply longer(400);
        QCOMPARE(longer.take(QByteArray(whole).insert(at, '\0')), VnaReply::State::Broken);
    }
}

void VnaFaultsTest::damagedAgainAndAgain_data()
{
    QTest::addColumn<int>("damage");
    QTest::newRow("lost") << static_cast<int>(Damage::Lost);
    QTest::newRow("added") << static_cast<int>(Damage::Added);
}

// Every 997th byte is damaged, so no sweep of 1600 bytes is good.
void VnaFaultsTest::damagedAgainAndAgain()
{
    QFETCH(int, damage);
    VnaBench bench(vnaSettings(), [damage](quint64 index, char byte) {
        const quint64 at = index % kFaultyByte == kFaultyByte - 1 ? index : index + 1;
        return damageOnce(static_cast<Damage>(damage), at)(index, byte);
    });
    bench.board.recordSamples(10 * VnaBench::kPoints);
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_COMPARE_WITH_TIMEOUT(bench.completes.count(), 1, 8'000);
    QCOMPARE(bench.vectors.count(), 0);
    QCOMPARE(bench.errorsWith(code::kTransfer), 3);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
    bench.driver.StopSweep(2);
    QCOMPARE(bench.completes.count(), 1);
}

void VnaFaultsTest::silenceAfterTwoSweeps()
{
    VnaBench bench(vnaSettings(), [](quint64 index, char byte) {
        return index < kCheckBytes + 2 * kReplyBytes ? QByteArray(1, byte) : QByteArray();
    });
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_COMPARE_WITH_TIMEOUT(bench.completes.count(), 1, 10'000);
    QCOMPARE(bench.vectors.count(), 2);
    QCOMPARE(bench.errorsWith(code::kTransfer), 3);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
}

void VnaFaultsTest::halfAReplyThenSilence()
{
    VnaBench bench(vnaSettings(), [](quint64 index, char byte) {
        return index < kCheckBytes + kReplyBytes / 2 || index >= kCheckBytes + kReplyBytes ? QByteArray(1, byte)
                                                                                           : QByteArray();
    });
    bench.board.recordSamples(10 * VnaBench::kPoints);
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.count() >= 3, 5'000);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kTransfer), 1);
    QCOMPARE(wrongVectors(bench), 0);
}

void VnaFaultsTest::stopWhileItIsSilent()
{
    VnaBench bench(vnaSettings(), [](quint64 index, char byte) {
        return index < kCheckBytes + kReplyBytes / 2 ? QByteArray(1, byte) : QByteArray();
    });
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.link->passed() >= kCheckBytes + kReplyBytes);
    QElapsedTimer clock;
    clock.start();
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 1);
    QVERIFY(clock.elapsed() < 500);
    test::nothingHappensFor(2'000);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(bench.vectors.count(), 0);
}

void VnaFaultsTest::refusal()
{
    SimulatorSettings settings = vnaSettings();
    settings.fault = SimulatorFault::Refuse;
    VnaBench bench(settings);
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_COMPARE_WITH_TIMEOUT(bench.completes.count(), 1, 10'000);
    QCOMPARE(bench.link->written().size(), 3);
    QCOMPARE(bench.vectors.count(), 0);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
}

void VnaFaultsTest::generatorCommandWithoutAnAnswer()
{
    SimulatorSettings settings = vnaSettings();
    settings.fault = SimulatorFault::Refuse;
    VnaBench bench(settings);
    QVERIFY(bench.open());
    bench.driver.SetFrequency(10'000'000);
    QTRY_COMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
}

void VnaFaultsTest::unplugInMidSweep()
{
    VnaBench bench;
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.link->passed() > 400);
    bench.link->unplug();
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
    bench.driver.StopSweep(2);
    bench.driver.SetFrequency(10'000'000);
    QCOMPARE(bench.completes.count(), 1);

    // The device is plugged in again: the next sweep reopens the port.
    while (bench.board.nextByte()) {
    }
    const auto before = bench.vectors.count();
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.vectors.count() >= before + 2);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.count(), 2);
    QCOMPARE(bench.errors.count(), 1);
}

void VnaFaultsTest::lossThatACommandFinds_data()
{
    QTest::addColumn<int>("call");
    QTest::newRow("discarding") << static_cast<int>(MemoryLink::Call::Discard);
    QTest::newRow("writing") << static_cast<int>(MemoryLink::Call::Write);
}

// The device is unplugged while idle, and the next command notices the loss.
void VnaFaultsTest::lossThatACommandFinds()
{
    QFETCH(int, call);
    VnaBench bench;
    QVERIFY(bench.open());
    bench.link->unplugUnnoticedUntil(static_cast<MemoryLink::Call>(call));
    bench.start(1'000'000, 22'500);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
    QVERIFY(bench.link->written().isEmpty());

    bench.start(1'000'000, 22'500); // plugged in again
    QTRY_VERIFY(bench.vectors.count() >= 2);
    QCOMPARE(bench.completes.count(), 1);
    QCOMPARE(bench.errors.count(), 1);
}

void VnaFaultsTest::chatterWhenIdle()
{
    VnaBench bench;
    bench.board.recordSamples(10 * VnaBench::kPoints);
    QVERIFY(bench.open());
    for (int round = 0; round < 50; ++round) {
        bench.link->inject("AT\r\n");
        QCoreApplication::processEvents();
    }
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.vectors.count() >= 3);
    QCOMPARE(bench.errors.count(), 0);
    QCOMPARE(wrongVectors(bench), 0);
}

// The four extra bytes look like a sample; only the surplus at the end of the reply reveals them.
void VnaFaultsTest::chatterInFrontOfAReply()
{
    VnaBench bench;
    bench.board.recordSamples(10 * VnaBench::kPoints);
    QVERIFY(bench.open());
    bench.start(1'000'000, 22'500);
    bench.link->inject(QByteArray::fromHex("FF012C03"));
    QTRY_VERIFY(bench.vectors.count() >= 3);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kTransfer), 1);
    QCOMPARE(wrongVectors(bench), 0);
}

void VnaFaultsTest::endlessChatter()
{
    VnaBench bench;
    QVERIFY(bench.open());
    QTimer chatter;
    connect(&chatter, &QTimer::timeout, &bench.driver, [&bench] { bench.link->inject("U"); });
    chatter.start(1);
    bench.start(1'000'000, 22'500);
    QTRY_COMPARE_WITH_TIMEOUT(bench.completes.count(), 1, 15'000);
    QCOMPARE(bench.vectors.count(), 0);
    QCOMPARE(bench.errorsWith(code::kTransfer), 3);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
    chatter.stop();
    bench.start(1'000'000, 22'500);
    QTRY_VERIFY(bench.vectors.count() >= 1);
    QCOMPARE(bench.completes.count(), 1);
}

void VnaFaultsTest::garbageBeforeTheFirstAnswer()
{
    VnaBench bench;
    bench.board.recordSamples(20 * VnaBench::kPoints);
    QVERIFY(bench.open());
    std::mt19937 random(7);
    QByteArray garbage;
    for (int count = 0; count < 10'000; ++count)
        garbage += static_cast<char>(random());
    bench.start(1'000'000, 22'500);
    for (qsizetype at = 0; at < garbage.size(); at += 100) {
        bench.link->inject(garbage.mid(at, 100));
        QCoreApplication::processEvents();
    }
    QTRY_VERIFY(bench.vectors.count() >= 3);
    QCOMPARE(bench.errors.count(), 1);
    QCOMPARE(bench.errorsWith(code::kTransfer), 1);
    QCOMPARE(wrongVectors(bench), 0);
    QCOMPARE(bench.completes.count(), 0);
}

QTEST_GUILESS_MAIN(VnaFaultsTest)
#include "vna_faults.moc"
