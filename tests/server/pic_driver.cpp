// SPDX-License-Identifier: MIT
#include "server/drivers/pic_driver.h"
#include "server/boards/pic_board.h"
#include "server/boards/pty_board.h"
#include "server/links/serial_link.h"
#include "tests/server/error_count.h"
#include "tests/support/quiet_time.h"
#include "tests/support/tuning_word.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace calvorn;

namespace {

constexpr int kPort = 100;
constexpr int kPoints = 400;
constexpr int kFrameBytes = 505;
const QString kLine = QStringLiteral("115200,N,8,1");

SimulatorSettings settingsWith(SimulatorFault fault, bool paced = false)
{
    SimulatorSettings settings;
    settings.device = DeviceKind::Crystal;
    settings.clockHz = 125e6;
    settings.paced = paced;
    settings.fault = fault;
    return settings;
}

// A simulated board that records the words sent to its generator.
class ProbedPic : public PicBoard
{
public:
    using PicBoard::PicBoard;

    std::uint32_t word() const { return m_word; } // 0: off
    // Records the next `atMost` words that the generator receives.
    void recordWords(std::size_t atMost) { m_recordAtMost = atMost; }
    const std::vector<std::uint32_t> &words() const { return m_words; }

private:
    void generatorSet(std::uint32_t word) override
    {
        m_word = word;
        if (m_words.size() < m_recordAtMost)
            m_words.push_back(word);
    }

    std::uint32_t m_word = 0;
    std::size_t m_recordAtMost = 0;
    std::vector<std::uint32_t> m_words;
};

// Keeps a board alive after its thread has exited, so that the test can examine the board.
class SharedBoard : public SerialBoard
{
public:
    explicit SharedBoard(std::shared_ptr<ProbedPic> board)
        : m_board(std::move(board))
    {
    }

    void receive(std::uint8_t byte) override { m_board->receive(byte); }
    std::optional<std::uint8_t> nextByte() override { return m_board->nextByte(); }
    std::chrono::nanoseconds idleTime() const override { return m_board->idleTime(); }

private:
    std::shared_ptr<ProbedPic> m_board;
};

struct Bench
{
    explicit Bench(SimulatorSettings settings)
        : driver(
              [this, settings](int, const LineSettings &line) -> std::shared_ptr<ByteLink> {
                  if (!isPluggedIn)
                      throw std::runtime_error("There is no device.");
                  board = std::make_shared<ProbedPic>(settings);
                  board->recordWords(recordAtMost);
                  pty = std::make_unique<PtyBoard>(std::make_unique<SharedBoard>(board), settings, kFrameBytes);
                  auto link = std::make_shared<SerialLink>(pty->devicePath(), line);
                  QObject::connect(link.get(), &ByteLink::bytesArrived, &driver, [this] { ++arrivals; });
                  return link;
              },
              [this, settings] {
                  return PicSettings{{DdsChip::Ad9850, settings.clockHz, 1}, settlingUs};
              })
    {
        QObject::connect(
            &driver, &PicDriver::aVettore, &driver, [this] { driver.VectorsTaken(1); }, Qt::QueuedConnection);
    }

    ~Bench() { driver.ClosePort(); }

    bool start(int startHz = 8'980'000, int stepHz = 100)
    {
        if (!driver.OpenPort(kPort, kLine) || !driver.PrepareSweep(startHz, stepHz))
            return false;
        driver.RunSweep();
        return true;
    }

    int errorsWith(int wanted) const { return errorsWithCode(errors, wanted); }

    // Stops the board's thread and returns the board.
    const ProbedPic &boardAtRest()
    {
        driver.ClosePort();
        pty.reset();
        return *board;
    }

    std::size_t recordAtMost = 0;
    bool isPluggedIn = true;
    int settlingUs = 0; // the configured settling time
    int arrivals = 0;   // bytesArrived() signals from all links
    std::shared_ptr<ProbedPic> board;
    std::unique_ptr<PtyBoard> pty;
    PicDriver driver;
    QSignalSpy vectors{&driver, &PicDriver::aVettore};
    QSignalSpy errors{&driver, &PicDriver::aErrore};
    QSignalSpy completes{&driver, &PicDriver::aComplete};
};

// The crystal's series resonance at 9.000 MHz is row 200 of a sweep from 8.98 MHz in steps of 100 Hz.
bool peaksInRow200(const QVariant &vector)
{
    const auto counts = vector.value<QList<int>>();
    return counts.size() == kPoints && std::max_element(counts.begin(), counts.end()) - counts.begin() == 200;
}

} // namespace

// Tests the driver with a simulated board behind a real pseudo-terminal.
class PicDriverOnBoard : public QObject
{
    Q_OBJECT

private slots:
    void twoHundredSweeps();
    void singleFrequencies();
    void imageAndUselessFrequencies();
    void abortCompletesOnce();
    void refusals();
    void damagedSweepsAreNotShown_data();
    void damagedSweepsAreNotShown();
    void silenceEndsTheSweep_data();
    void silenceEndsTheSweep();
    void unplugIsOneErrorAndMayComeBack();
    void idleLinkCostsNothing();
    void talkativeBoards_data();
    void talkativeBoards();
    void neverFasterThanTheLine();
    void aStaleBoardShowsNothing();
    void slowDetectorsAreWaitedFor();
};

void PicDriverOnBoard::twoHundredSweeps()
{
    constexpr std::size_t kSweeps = 200;
    Bench bench(settingsWith(SimulatorFault::None));
    bench.recordAtMost = kSweeps * kPoints;
    QVERIFY(bench.start());
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.size() >= static_cast<qsizetype>(kSweeps), 30'000);
    for (const auto &vector : bench.vectors)
        QVERIFY(peaksInRow200(vector.at(0)));
    QCOMPARE(bench.errors.size(), 0);

    const std::vector<std::uint32_t> &words = bench.boardAtRest().words();
    QCOMPARE(words.size(), kSweeps * kPoints);
    for (std::size_t index = 0; index < words.size(); ++index) {
        const auto point = static_cast<std::int64_t>(index % kPoints);
        const std::int64_t planned = test::exactWord(8'980'000 + 100 * point);
        QVERIFY(std::llabs(planned - words[index]) <= 1);
    }
}

void PicDriverOnBoard::singleFrequencies()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    QVERIFY(bench.driver.SendFrequency("A", 10'000'000));
    QVERIFY(std::llabs(std::int64_t(bench.boardAtRest().word()) - 0x147AE148) <= 1);
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    QVERIFY(bench.driver.SendFrequency("A", 10'000'000));
    QVERIFY(bench.driver.SendFrequency("*", 0));
    QCOMPARE(bench.boardAtRest().word(), 0U);
    QCOMPARE(bench.errors.size(), 0);
}

// Near 125 MHz - 9 MHz the generator outputs its image, so the resonance appears in the mirrored row.
void PicDriverOnBoard::imageAndUselessFrequencies()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    QVERIFY(bench.driver.SendFrequency("A", 40'000'000));
    QCOMPARE(bench.errors.size(), 0);
    const QString useless = QStringLiteral("40000001 Hz is above the generator's useful maximum of 40000000 Hz.");
    QTest::ignoreMessage(QtInfoMsg, qPrintable(useless));
    QVERIFY(bench.driver.SendFrequency("A", 40'000'001));
    QVERIFY(bench.driver.SendFrequency("A", 100'000'000));
    QCOMPARE(bench.errorsWith(code::kNoAction), 1);
    QCOMPARE(bench.errors.at(0).at(1).toString(), useless);

    QTest::ignoreMessage(QtInfoMsg, "116019900 Hz is above half the generator's clock: the output is its image.");
    QVERIFY(bench.start(115'980'000, 100));
    QTRY_VERIFY(bench.vectors.size() >= 3);
    for (const auto &vector : bench.vectors)
        QVERIFY(peaksInRow200(vector.at(0)));
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.size(), 1);
    QCOMPARE(bench.errorsWith(code::kNoAction), 2); // opening the port enables the remark again
    QCOMPARE(bench.errors.size(), 2);

    // These frequencies need tuning words of more than 32 bits.
    QVERIFY(!bench.driver.SendFrequency("A", 125'000'000));
    QVERIFY(!bench.driver.PrepareSweep(124'999'000, 10));
    bench.driver.RunSweep();
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
    QCOMPARE(bench.completes.size(), 2);
}

void PicDriverOnBoard::abortCompletesOnce()
{
    Bench bench(settingsWith(SimulatorFault::None, true));
    QVERIFY(bench.start());
    QTRY_VERIFY(!bench.vectors.isEmpty());
    QVERIFY(!bench.driver.SendFrequency("A", 7'000'000));
    bench.driver.StopSweep(2);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.size(), 1);
    const auto shown = bench.vectors.size();
    test::nothingHappensFor(150);
    QCOMPARE(bench.completes.size(), 1);
    QCOMPARE(bench.vectors.size(), shown);
    QCOMPARE(bench.errors.size(), 0);
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.size() > shown);
}

void PicDriverOnBoard::refusals()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    QVERIFY(!bench.driver.PrepareSweep(124'999'000, 10));
    bench.driver.RunSweep();
    QCOMPARE(bench.completes.size(), 1);
    QVERIFY(!bench.driver.SendFrequency("Z", 1));
    QCOMPARE(bench.errorsWith(code::kSetting), 1);

    Bench stubborn(settingsWith(SimulatorFault::Refuse));
    QVERIFY(stubborn.driver.OpenPort(kPort, kLine));
    QVERIFY(!stubborn.driver.PrepareSweep(1'000'000, 1000));
    QVERIFY(!stubborn.driver.SendFrequency("A", 1'000'000));
}

void PicDriverOnBoard::damagedSweepsAreNotShown_data()
{
    QTest::addColumn<SimulatorFault>("fault");
    QTest::newRow("drop") << SimulatorFault::Drop;
    QTest::newRow("corrupt") << SimulatorFault::Corrupt;
    QTest::newRow("add") << SimulatorFault::Add;
}

void PicDriverOnBoard::damagedSweepsAreNotShown()
{
    QFETCH(SimulatorFault, fault);
    Bench bench(settingsWith(fault));
    QVERIFY(bench.start());
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.size() >= 20, 10'000);
    for (const auto &vector : bench.vectors)
        QVERIFY(peaksInRow200(vector.at(0)));
    QVERIFY(bench.errorsWith(code::kTransfer) >= 10);
    QCOMPARE(bench.errorsWith(code::kTransfer), bench.errors.size());
    QCOMPARE(bench.completes.size(), 0);
}

void PicDriverOnBoard::silenceEndsTheSweep_data()
{
    QTest::addColumn<SimulatorFault>("fault");
    QTest::newRow("silence") << SimulatorFault::Silence;
    QTest::newRow("half") << SimulatorFault::Half;
}

void PicDriverOnBoard::silenceEndsTheSweep()
{
    QFETCH(SimulatorFault, fault);
    Bench bench(settingsWith(fault));
    QVERIFY(bench.start());
    QTRY_COMPARE(bench.completes.size(), 1);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
    QVERIFY(!bench.vectors.isEmpty());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!bench.driver.PrepareSweep(8'980'000, 100));
    QVERIFY(timer.elapsed() < 2400);
}

void PicDriverOnBoard::unplugIsOneErrorAndMayComeBack()
{
    SimulatorSettings settings = settingsWith(SimulatorFault::None, true);
    Bench bench(settings);
    QVERIFY(bench.start());
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.isPluggedIn = false;
    bench.pty.reset(); // removes the terminal
    QTRY_COMPARE(bench.completes.size(), 1);
    const std::clock_t before = std::clock();
    test::nothingHappensFor(1'000);
    QVERIFY(std::clock() - before < CLOCKS_PER_SEC / 20);
    QCOMPARE(bench.errorsWith(code::kPort), 1);
    QCOMPARE(bench.errors.size(), 1);
    QCOMPARE(bench.completes.size(), 1);

    bench.driver.RunSweep(); // still unplugged
    QCOMPARE(bench.errorsWith(code::kPort), 2);
    QCOMPARE(bench.completes.size(), 2);

    // Plugged in again: the driver sends the lost board's plan to the new board.
    bench.isPluggedIn = true;
    const auto shown = bench.vectors.size();
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.size() >= shown + 2);
    for (const auto &vector : bench.vectors)
        QVERIFY(peaksInRow200(vector.at(0)));
    QCOMPARE(bench.errors.size(), 2);
    QCOMPARE(bench.completes.size(), 2);
}

void PicDriverOnBoard::idleLinkCostsNothing()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    const std::clock_t before = std::clock();
    test::nothingHappensFor(300);
    QVERIFY(std::clock() - before < CLOCKS_PER_SEC / 50);
}

void PicDriverOnBoard::talkativeBoards_data()
{
    QTest::addColumn<SimulatorFault>("fault");
    QTest::newRow("chatter") << SimulatorFault::Chatter;
    QTest::newRow("garbage") << SimulatorFault::Garbage;
}

void PicDriverOnBoard::talkativeBoards()
{
    QFETCH(SimulatorFault, fault);
    Bench bench(settingsWith(fault));
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    if (fault == SimulatorFault::Chatter) // the garbage arrives with the first answer
        QTRY_VERIFY(bench.arrivals >= 3);
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.size() >= 3);
    for (const auto &vector : bench.vectors)
        QVERIFY(peaksInRow200(vector.at(0)));
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.size(), 1);
    QVERIFY(bench.driver.SendFrequency("A", 7'000'000));
    QCOMPARE(bench.errors.size(), 0);
}

// Checks an upper limit only: a slow machine may sweep more slowly than the real line allows.
void PicDriverOnBoard::neverFasterThanTheLine()
{
    constexpr int kSweeps = 46;
    Bench bench(settingsWith(SimulatorFault::None, true));
    QVERIFY(bench.start());
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.size() >= kSweeps, 30'000);
    const double seconds = 1e-9 * static_cast<double>(timer.nsecsElapsed());
    QVERIFY(static_cast<double>(bench.vectors.size()) / seconds <= 11'520.0 / kFrameBytes);
    QCOMPARE(bench.errors.size(), 0);
}

// The board accepts the second plan but keeps sweeping the first, so none of its sweeps may be shown.
void PicDriverOnBoard::aStaleBoardShowsNothing()
{
    Bench bench(settingsWith(SimulatorFault::Stale));
    QVERIFY(bench.start());
    QTRY_VERIFY(bench.vectors.size() >= 3);
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.size(), 1);
    bench.vectors.clear();
    QVERIFY(bench.driver.PrepareSweep(8'970'000, 100));
    bench.driver.RunSweep();
    QTRY_COMPARE(bench.completes.size(), 2);
    QCOMPARE(bench.vectors.size(), 0);
    QVERIFY(bench.errorsWith(code::kTransfer) >= 3);
    QCOMPARE(bench.errorsWith(code::kBoard), 1);
    QCOMPARE(bench.errors.last().at(1).toString(),
             QStringLiteral("The board no longer delivers valid sweeps; the sweep ends."));
}

// At 5 ms per point, the board is silent for longer than the driver allows at the default settling time.
void PicDriverOnBoard::slowDetectorsAreWaitedFor()
{
    Bench bench(settingsWith(SimulatorFault::None, true));
    bench.settlingUs = 5'000;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(bench.start());
    QTRY_VERIFY_WITH_TIMEOUT(!bench.vectors.isEmpty(), 10'000);
    QVERIFY(timer.elapsed() >= 1'980);
    QVERIFY(peaksInRow200(bench.vectors.at(0).at(0)));
    QCOMPARE(bench.errors.size(), 0);
}

QTEST_GUILESS_MAIN(PicDriverOnBoard)
#include "pic_driver.moc"
