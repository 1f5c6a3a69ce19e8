// SPDX-License-Identifier: MIT
#include "server/drivers/pic_driver.h"
#include "server/boards/pic_board.h"
#include "server/boards/pty_board.h"
#include "server/links/serial_link.h"
#include "server/synthesiser/tuning_word.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <ctime>
#include <memory>
#include <stdexcept>

using namespace calvorn;

namespace {

constexpr int kPort = 100;
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

struct Bench
{
    explicit Bench(SimulatorSettings settings)
        : driver([this, settings](int, const QString &line) -> std::shared_ptr<ByteLink> {
            auto made = std::make_unique<PicBoard>(settings);
            board = made.get();
            board->recordWords(kPicSamples);
            pty = std::make_unique<PtyBoard>(std::move(made), settings, kPicFrameBytes);
            return std::make_shared<SerialLink>(pty->devicePath(), parseLineSettings(line));
        })
    {
        QObject::connect(&driver, &PicDriver::aVettore, &driver, &PicDriver::VectorTaken, Qt::QueuedConnection);
    }

    ~Bench() { driver.ClosePort(); }

    bool start(int startHz = 8'980'000, int stepHz = 100)
    {
        if (!driver.OpenPort(kPort, kLine) || !driver.PrepareSweep(startHz, stepHz))
            return false;
        driver.RunSweep();
        return true;
    }

    int errorsWith(ErrorCode code) const
    {
        return static_cast<int>(std::count_if(errors.begin(), errors.end(), [code](const QList<QVariant> &error) {
            return error.at(0).value<short>() == static_cast<short>(code);
        }));
    }

    PicBoard *board = nullptr;
    std::unique_ptr<PtyBoard> pty;
    PicDriver driver;
    QSignalSpy vectors{&driver, &PicDriver::aVettore};
    QSignalSpy errors{&driver, &PicDriver::aErrore};
    QSignalSpy completes{&driver, &PicDriver::aComplete};
};

// The crystal's series resonance at 9.000 MHz: row 200 of a sweep from 8.98 MHz in steps of 100 Hz.
bool peaksInRow200(const QVariant &vector)
{
    const auto counts = vector.value<QList<int>>();
    const auto peak = std::max_element(counts.begin(), counts.end()) - counts.begin();
    return counts.size() == kPicSamples && peak >= 198 && peak <= 202;
}

} // namespace

// The driver and the simulated board, with a real pseudo-terminal between them.
class PicDriverOnBoard : public QObject
{
    Q_OBJECT

private slots:
    void twoHundredSweeps();
    void everyPointHasItsWord();
    void abortCompletesOnce();
    void refusals();
    void damagedSweepsAreNotShown_data();
    void damagedSweepsAreNotShown();
    void silenceEndsTheSweep_data();
    void silenceEndsTheSweep();
    void unplugIsOneError();
    void idleLinkCostsNothing();
    void talkativeBoards_data();
    void talkativeBoards();
    void pacedRate();
};

void PicDriverOnBoard::twoHundredSweeps()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.start());
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.size() >= 200, 30'000);
    for (const auto &vector : bench.vectors)
        QVERIFY(peaksInRow200(vector.at(0)));
    QCOMPARE(bench.errors.size(), 0);
}

void PicDriverOnBoard::everyPointHasItsWord()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.start(1'000'000, 22'556));
    QTRY_VERIFY(!bench.vectors.isEmpty());
    bench.driver.StopSweep(2);
    QTRY_COMPARE(bench.completes.size(), 1);
    const std::vector<std::uint32_t> words = bench.board->words();
    QCOMPARE(words.size(), std::size_t(kPicSamples));
    for (int point = 0; point < kPicSamples; ++point) {
        const std::int64_t planned = tuningWord(1'000'000 + point * 22'556, 0.0, 125'000'000);
        QVERIFY(std::llabs(planned - words[static_cast<std::size_t>(point)]) <= 1);
    }
    QVERIFY(bench.driver.SendFrequency("A", 10'000'000));
    QVERIFY(std::llabs(std::int64_t(bench.board->word()) - 0x147AE148) <= 1);
    QVERIFY(bench.driver.SendFrequency("*", 0));
    QCOMPARE(bench.board->word(), 0U);
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
    QTest::qWait(150);
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
    QCOMPARE(bench.errorsWith(ErrorCode::Setting), 1);

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
    QVERIFY(bench.errorsWith(ErrorCode::Transmission) >= 10);
    QCOMPARE(bench.errorsWith(ErrorCode::Transmission), bench.errors.size());
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
    QCOMPARE(bench.errorsWith(ErrorCode::Board), 1);
    QVERIFY(!bench.vectors.isEmpty());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!bench.driver.PrepareSweep(8'980'000, 100));
    QVERIFY(timer.elapsed() < 2400);
}

void PicDriverOnBoard::unplugIsOneError()
{
    Bench bench(settingsWith(SimulatorFault::Unplug));
    QVERIFY(bench.start());
    QTRY_COMPARE(bench.completes.size(), 1);
    const std::clock_t before = std::clock();
    QTest::qWait(300);
    QVERIFY(std::clock() - before < CLOCKS_PER_SEC / 20);
    QCOMPARE(bench.errorsWith(ErrorCode::Port), 1);
    QCOMPARE(bench.completes.size(), 1);
}

void PicDriverOnBoard::idleLinkCostsNothing()
{
    Bench bench(settingsWith(SimulatorFault::None));
    QVERIFY(bench.driver.OpenPort(kPort, kLine));
    const std::clock_t before = std::clock();
    QTest::qWait(300);
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
    QTest::qWait(200);
    QVERIFY(bench.driver.PrepareSweep(8'980'000, 100));
    bench.driver.RunSweep();
    QTRY_VERIFY(bench.vectors.size() >= 3);
    QVERIFY(peaksInRow200(bench.vectors.at(0).at(0)));
}

void PicDriverOnBoard::pacedRate()
{
    Bench bench(settingsWith(SimulatorFault::None, true));
    QVERIFY(bench.start());
    QTRY_VERIFY(!bench.vectors.isEmpty());
    QElapsedTimer timer;
    timer.start();
    const auto before = bench.vectors.size();
    QTRY_VERIFY_WITH_TIMEOUT(bench.vectors.size() >= before + 46, 10'000);
    const double rate = 46e9 / static_cast<double>(timer.nsecsElapsed());
    const double limit = 11'520.0 / kPicDataBytes;
    qInfo("%.2f sweeps/s, the line's limit for the samples alone is %.2f: %.1f %%", rate, limit, 100 * rate / limit);
    QVERIFY(rate > 0.9 * limit);
}

QTEST_GUILESS_MAIN(PicDriverOnBoard)
#include "pic_driver.moc"
