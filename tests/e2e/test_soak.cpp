// SPDX-License-Identifier: MIT
// Runs many sweeps through the whole window, the real driver and the simulated parallel-port board, with random changes
// to range, scale, view and speed, and random stops, starts and exports. Everything the server sends must arrive once
// and in order, and every vector must enter the table while the table has the vector's plan. Every redraw must show the
// table, and the screen must show what was drawn. Every start must complete once, and memory use must stay constant.
//
// There are three runs: as fast as possible, at the real board's pace with an accelerated clock, and as fast as
// possible with the Measure panel in use. CALVORN_SOAK_SWEEPS, CALVORN_SOAK_PACED and CALVORN_SOAK_MEASURING set the
// number of sweeps in each run (default 400). CALVORN_SOAK_SEED selects another sequence of events.
#include "controls/range_entry.h"
#include "display/sweep_graph.h"
#include "instrument/acquisition_driver.h"
#include "lpt_proxy.h"
#include "tests/support/quiet_time.h"
#include "tests/support/resident_memory.h"
#include "tests/support/tally.h"
#include "tests/support/walk_numbers.h"
#include "tests/support/window_bench.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QScreen>
#include <QTimer>

#include <random>
#include <utility>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr int kPatienceMs = 20'000; // timeout for one vector on a busy machine
#ifdef CALVORN_SANITIZED
constexpr qint64 kMostGrowthKb = 16384; // sanitizers delay freeing memory
#else
constexpr qint64 kMostGrowthKb = 4096;
#endif
constexpr int kUpdateDelayMs = 20;
constexpr int kHaste = 20;   // speed-up of the paced board's clock
constexpr int kUnderWay = 8; // the maximum number of unacknowledged vectors
constexpr double kStandardSweepMs = 106.0;

int fromEnvironment(const char *name, int fallback)
{
    const int value = qEnvironmentVariableIntValue(name);
    return value > 0 ? value : fallback;
}

// Opens the Measure panel and switches on everything that processes sweeps.
constexpr const char *kMeasuring = "[Measure]\r\nOpen=1\r\nMax hold=1\r\nMin hold=1\r\nAverage=1\r\nTrack peak=1\r\n";

// An event received from the server, in the server's tally format.
struct Arrival
{
    QByteArray line;
    bool handedOn = true; // false: the program discarded the vector
    QByteArray shownPlan; // the table's plan at that moment
};

// The base class Tally comes first because the server needs the tally when the window opens.
struct Soak : test::Tally, WindowBench
{
    Soak(bool paced, bool measuring)
        : Tally(kHaste)
        , WindowBench(Tally::program(),
                      test::ProgramFolder::preparedSettings().replace("Pace=real", paced ? "Pace=real" : "Pace=none") +
                          (measuring ? kMeasuring : ""))
        , random(static_cast<std::minstd_rand::result_type>(fromEnvironment("CALVORN_SOAK_SEED", 1)))
    {
        AcquisitionDriver *driver = WindowBench::driver();
        auto *proxy = driver->findChild<LptProxy *>();
        graph = find<SweepGraph>("picSweep");
        // Makes range changes take effect faster than a user could enter them.
        window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"))->setInterval(kUpdateDelayMs);
        // These handlers run after the program's own handlers have stored the vector or drawn the curve.
        QObject::connect(driver, &AcquisitionDriver::aVettore, window.get(),
                         [this](const QVector<int> &vector) { onVector(vector); });
        QObject::connect(driver, &AcquisitionDriver::aComplete, window.get(), [this] { ++completes; });
        QObject::connect(driver, &AcquisitionDriver::aErrore, window.get(), [this] { ++errors; });
        QObject::connect(proxy, &LptProxy::aVettore, window.get(), [this](const QList<int> &vector) {
            const bool handedOn = std::exchange(handedOnNow, false);
            arrivals.append({"vector " + QByteArray::number(test::vectorSum(vector)), handedOn, shownPlan()});
        });
        QObject::connect(proxy, &LptProxy::aComplete, window.get(), [this] {
            arrivals.append({"complete", true, {}});
        });
        QObject::connect(proxy, &LptProxy::aErrore, window.get(), [this](short code, const QString &) {
            arrivals.append({"error " + QByteArray::number(code), true, {}});
        });
        QObject::connect(table(), &SweepTable::rebuilt, window.get(), [this] { curveCleared = true; });
        QObject::connect(&graph->redraws(), &RedrawTimer::fired, window.get(), [this] { onRedraw(); });
    }

    // Stores four traces and creates limits from the current sweep.
    void storeAndLimit() const
    {
        for (const char *name : {"cmdStore_0", "cmdStore_1", "cmdStore_2", "cmdStore_3", "cmdFromLive"})
            find<QAbstractButton>(name)->click();
    }

    void onVector(const QVector<int> &vector)
    {
        ++vectors;
        handedOnNow = redrawDue = true;
        // Noise makes every sweep different, so equal vectors mean that one was delivered twice.
        doubled += vector == latest ? 1 : 0;
        latest = vector;
        for (int row = 1; row <= 400; ++row)
            lostCells += table()->text(row, SweepTable::SampleColumn).toInt() == vector[row - 1] ? 0 : 1;
    }

    void onRedraw()
    {
        ++redraws;
        redrawDue = curveCleared = false;
        driftedCurves += curveIsTable() ? 0 : 1;
    }

    bool curveIsTable() const
    {
        const QPolygonF curve = graph->curve();
        if (curve.size() != 400)
            return false;
        const calvorn::test::WalkNumbers numbers{QLocale()};
        const double factor = configuration.scaleType == 0 ? 1000.0 : -1000.0;
        for (int row = 1; row <= 400; ++row)
            if (curve[row - 1].y() != factor * numbers.number(table()->text(row, SweepTable::AmplitudeColumn)))
                return false;
        return true;
    }

    // Returns "plan <start> <step>" from the frequencies in the table.
    QByteArray shownPlan() const
    {
        const calvorn::test::WalkNumbers numbers{QLocale()};
        const auto hertz = [&](int row) {
            return static_cast<qint64>(numbers.number(table()->text(row, SweepTable::FrequencyColumn)));
        };
        return "plan " + QByteArray::number(hertz(1)) + ' ' + QByteArray::number(hertz(2) - hertz(1));
    }

    // Returns whether the screen shows what the graph would paint now.
    bool screenIsGraph() const
    {
        const QPoint at = graph->mapTo(window.get(), QPoint());
        const QPixmap shown =
            window->screen()->grabWindow(window->winId(), at.x(), at.y(), graph->width(), graph->height());
        return shown.toImage().convertToFormat(QImage::Format_RGB32) ==
               graph->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    // Compares the events received since the last call with those the server has sent. Call only when idle.
    void compareWithTally()
    {
        const QList<QByteArray> sent = news();
        qsizetype at = 0;
        qsizetype planAt = -kUnderWay - 1;
        QByteArray plan = lastPlan;
        for (qsizetype i = 0; i < sent.size(); ++i) {
            if (sent[i].startsWith("plan ")) {
                plan = sent[i];
                planAt = i;
                ++plans;
                continue;
            }
            const Arrival arrival = at < arrivals.size() ? arrivals[at] : Arrival();
            // After a missing event all later events differ, so this counts only the first difference.
            if (arrival.line != sent[i]) {
                ++unlikeSent;
                break;
            }
            ++at;
            if (!sent[i].startsWith("vector "))
                continue;
            if (arrival.handedOn)
                underWrongPlan += arrival.shownPlan == plan ? 0 : 1;
            else if (isFollowedByPlan(sent, i))
                ++droppedBeforePlan;
            else if (i - planAt <= kUnderWay)
                ++droppedBehindPlan;
            else
                ++droppedForNothing;
        }
        unlikeSent += at < arrivals.size() ? 1 : 0;
        lastPlan = plan;
        arrivals.clear();
    }

    // Returns whether a plan follows the vector. A vector may be discarded if it was in transit when a new plan was
    // sent, and also if it arrived while that call blocked the window's thread.
    static bool isFollowedByPlan(const QList<QByteArray> &sent, qsizetype vector)
    {
        int underWay = 0;
        for (qsizetype i = vector; i < sent.size() && underWay <= kUnderWay; ++i) {
            if (sent[i].startsWith("plan "))
                return true;
            underWay += sent[i].startsWith("vector ") ? 1 : 0;
        }
        return false;
    }

    int any(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }

    bool awaitVectors(int more)
    {
        const int wanted = vectors + more;
        QElapsedTimer patience;
        patience.start();
        while (vectors < wanted && patience.elapsed() < kPatienceMs)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        return vectors >= wanted;
    }

    void start()
    {
        ++starts;
        click("cmdStart");
    }

    bool stop()
    {
        click("cmdStop");
        if (!QTest::qWaitFor([this] { return isShown("cmdStart"); }, kPatienceMs))
            return false;
        compareWithTally();
        if (!QTest::qWaitFor([this] { return !redrawDue && screenIsGraph(); }, 2'000))
            ++stalePictures;
        driftedCurves += curveIsTable() || (curveCleared && graph->curve().isEmpty()) ? 0 : 1;
        return true;
    }

    void changeRange()
    {
        const int from = 1'000'000 + 1'000 * any(10'000);
        type("txtStart", QString::number(from));
        type("txtStop", QString::number(from + 400'000 + 1'000 * any(20'000)));
    }

    void changeScale()
    {
        constexpr const char *kScales[] = {"mnuScalaLineare", "mnuScalaLogaritmica1", "mnuScalaLogaritmica1dB",
                                           "mnuScalaLogaritmica10", "mnuScalaLogaritmica10dB"};
        window->findChild<QAction *>(QString::fromLatin1(kScales[any(5)]))->trigger();
    }

    // Changes the speed for a few sweeps only, so that most use the standard speed.
    bool changeSpeed()
    {
        click(qPrintable(QStringLiteral("optSpeed_%1").arg(any(3))));
        const bool came = awaitVectors(1 + any(4));
        click("optSpeed_0");
        return came;
    }

    // Returns the sweep file expected for the table: hertz, counts, and thousandths of the amplitudes.
    QByteArray fileOfTable() const
    {
        const calvorn::test::WalkNumbers numbers{QLocale()};
        QByteArray text("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
        for (int row = 1; row <= 400; ++row) {
            const double amplitude = numbers.number(table()->text(row, SweepTable::AmplitudeColumn));
            text += QByteArray::number(row) + ',' +
                    QByteArray::number(numbers.number(table()->text(row, SweepTable::FrequencyColumn)), 'f', 0) + ',' +
                    table()->text(row, SweepTable::SampleColumn).toLatin1() + ',' +
                    QByteArray::number(qRound64(1000.0 * amplitude)) + "\r\n";
        }
        return text;
    }

    // Stops, exports and starts again. Returns whether the exported file matches the table.
    bool exportSweep()
    {
        if (!stop())
            return false;
        desktop.fileChoice = folder.path() + QStringLiteral("/soak.csv");
        desktop.suggestions.clear();
        window->findChild<QAction *>(QStringLiteral("mnuSaveCSV"))->trigger();
        QFile file(desktop.fileChoice);
        const bool same = file.open(QIODevice::ReadOnly) && file.readAll() == fileOfTable();
        ++exports;
        start();
        return same;
    }

    bool act()
    {
        switch (any(12)) {
        case 0:
            changeRange();
            return true;
        case 1:
        case 2:
            changeScale();
            return true;
        case 3:
        case 4:
            click(qPrintable(QStringLiteral("cmdView_%1").arg(any(2))));
            return true;
        case 5:
            return changeSpeed();
        case 6:
            return exportSweep();
        case 7:
            if (!stop())
                return false;
            start();
            return true;
        default:
            return true;
        }
    }

    struct Memory
    {
        qint64 windowKb = 0;
        qint64 serverKb = 0;
    };

    Memory memory() const
    {
        return {test::memoryKilobytes(QCoreApplication::applicationPid()),
                test::memoryKilobytes(station->instrument.server().findChildren<QProcess *>().first()->processId())};
    }

    std::minstd_rand random;
    SweepGraph *graph = nullptr;
    QList<Arrival> arrivals;
    QByteArray lastPlan;
    QVector<int> latest;
    bool handedOnNow = false;
    bool redrawDue = false;
    bool curveCleared = true;
    int vectors = 0;
    int doubled = 0;
    int lostCells = 0;
    int unlikeSent = 0;
    int underWrongPlan = 0;
    int plans = 0;
    int droppedBeforePlan = 0;
    int droppedBehindPlan = 0;
    int droppedForNothing = 0;
    int redraws = 0;
    int driftedCurves = 0;
    int stalePictures = 0;
    int starts = 0;
    int completes = 0;
    int errors = 0;
    int exports = 0;
};

} // namespace

class TestSoak : public QObject
{
    Q_OBJECT

private slots:
    void manySweeps_data();
    void manySweeps();
};

void TestSoak::manySweeps_data()
{
    QTest::addColumn<bool>("paced");
    QTest::addColumn<bool>("measuring");
    QTest::addColumn<int>("wanted");
    QTest::newRow("as fast as they can") << false << false << fromEnvironment("CALVORN_SOAK_SWEEPS", 400);
    QTest::newRow("paced, by a faster clock") << true << false << fromEnvironment("CALVORN_SOAK_PACED", 400);
    QTest::newRow("with everything on") << false << true << fromEnvironment("CALVORN_SOAK_MEASURING", 400);
}

void TestSoak::manySweeps()
{
    QFETCH(bool, paced);
    QFETCH(bool, measuring);
    QFETCH(int, wanted);
    Soak soak(paced, measuring);
    soak.start();
    if (measuring) {
        QVERIFY(soak.awaitVectors(2));
        // The button is enabled when the first sweep has been drawn.
        QTRY_VERIFY(soak.find<QAbstractButton>("cmdStore_0")->isEnabled());
        soak.storeAndLimit();
        QVERIFY(soak.graph->model().legend().size() > 7);
        QVERIFY(!soak.graph->model().limits.empty());
    }
    QElapsedTimer clock;
    clock.start();
    // Measures memory only after the font and picture caches have filled.
    Soak::Memory warm;
    Soak::Memory middle;
    while (soak.vectors < wanted) {
        if (warm.windowKb == 0 && soak.vectors >= std::min(wanted / 4, 2'000))
            warm = soak.memory();
        if (middle.windowKb == 0 && soak.vectors >= wanted / 2)
            middle = soak.memory();
        QVERIFY(soak.awaitVectors(1 + soak.any(16)));
        QVERIFY(soak.act());
        QVERIFY2(soak.desktop.boxes.isEmpty(), qPrintable(soak.desktop.lastText()));
    }
    QVERIFY(soak.stop());
    const double seconds = 1e-3 * static_cast<double>(clock.elapsed());
    const Soak::Memory end = soak.memory();
    const int vectors = soak.vectors;
    calvorn::test::nothingHappensFor(100);

    qInfo(
        "%d sweeps in %.0f s, %.0f a second; %d redraws, %d starts, %d exports, %d plans; dropped before and behind a "
        "plan: %d, %d; memory in kB at start, middle, end: window %lld, %lld, %lld, server %lld, %lld, %lld",
        soak.vectors, seconds, soak.vectors / seconds, soak.redraws, soak.starts, soak.exports, soak.plans,
        soak.droppedBeforePlan, soak.droppedBehindPlan, warm.windowKb, middle.windowKb, end.windowKb, warm.serverKb,
        middle.serverKb, end.serverKb);
    QCOMPARE(soak.vectors, vectors); // no vector arrives after the sweep has stopped
    QCOMPARE(soak.completes, soak.starts);
    QCOMPARE(soak.errors, 0);
    QCOMPARE(soak.doubled, 0);
    QCOMPARE(soak.lostCells, 0);
    QCOMPARE(soak.unlikeSent, 0);
    QCOMPARE(soak.underWrongPlan, 0);
    QCOMPARE(soak.droppedForNothing, 0);
    QVERIFY(soak.redraws > 0);
    QCOMPARE(soak.driftedCurves, 0);
    QCOMPARE(soak.stalePictures, 0);
    QVERIFY2(end.windowKb - warm.windowKb < kMostGrowthKb, qPrintable(QString::number(end.windowKb - warm.windowKb)));
    QVERIFY2(end.serverKb - warm.serverKb < kMostGrowthKb, qPrintable(QString::number(end.serverKb - warm.serverKb)));
    // A paced board must not run faster than its clock.
    if (paced)
        QVERIFY(soak.vectors / seconds < kHaste * 1e3 / kStandardSweepMs);
}

QTEST_MAIN(TestSoak)
#include "test_soak.moc"
