// SPDX-License-Identifier: MIT
// Thousands of sweeps of the whole window on the real server and its simulated parallel-port board, as fast as both
// can, while somebody changes range, scale, view and speed, stops, starts and exports at random. Every vector must
// stand in the table, every redraw must show the table, every start must end once, and the memory must stay flat.
//
// CALVORN_SOAK_SWEEPS is the number of sweeps, 400 if not given; CALVORN_SOAK_SEED makes another course of events.
#include "acquisition/acquisition_driver.h"
#include "core/number_text.h"
#include "data/sweep_csv.h"
#include "display/sweep_graph.h"
#include "tests/support/resident_memory.h"
#include "tests/support/window_bench.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <random>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr int kPatienceMs = 20'000; // for one vector, on a busy machine
constexpr qint64 kMostGrowthKb = 4096;

int fromEnvironment(const char *name, int fallback)
{
    const int value = qEnvironmentVariableIntValue(name);
    return value > 0 ? value : fallback;
}

struct Soak : WindowBench
{
    Soak()
        : WindowBench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")),
                      test::ProgramFolder::preparedSettings().replace("Pace=real", "Pace=none"))
        , random(static_cast<std::minstd_rand::result_type>(fromEnvironment("CALVORN_SOAK_SEED", 1)))
    {
        auto *driver = window->findChild<AcquisitionDriver *>();
        graph = find<SweepGraph>("picSweep");
        // Behind the program's own handlers, which have stored the vector or drawn the curve by then.
        QObject::connect(driver, &AcquisitionDriver::aVettore, window.get(),
                         [this](const QVector<int> &vector) { onVector(vector); });
        QObject::connect(driver, &AcquisitionDriver::aComplete, window.get(), [this] { ++completes; });
        QObject::connect(driver, &AcquisitionDriver::aErrore, window.get(), [this] { ++errors; });
        QObject::connect(graph, &SweepGraph::graphTimerFired, window.get(), [this] { onRedraw(); });
    }

    void onVector(const QVector<int> &vector)
    {
        ++vectors;
        // With its noise no sweep is like another.
        doubled += vector == latest ? 1 : 0;
        latest = vector;
        for (int row = 1; row <= kSweepPoints; ++row)
            lostCells += table()->text(row, SweepTable::SampleColumn).toInt() == vector[row - 1] ? 0 : 1;
    }

    void onRedraw()
    {
        ++redraws;
        const QPolygonF curve = graph->curve();
        const NumberText numbers;
        const double factor = graph->coordinates().factor();
        for (int row = 1; row <= kSweepPoints; ++row) {
            const double cell = numbers.toDouble(table()->text(row, SweepTable::AmplitudeColumn));
            const bool same = curve.size() == kSweepPoints && curve[row - 1].y() == factor * cell;
            driftedPoints += same ? 0 : 1;
        }
    }

    int any(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
    bool isSweeping() const { return isShown("cmdStop"); }

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
        return QTest::qWaitFor([this] { return isShown("cmdStart"); }, kPatienceMs);
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

    // Stops, and what is exported is what the table shows.
    bool exportSweep()
    {
        if (!stop())
            return false;
        desktop.fileChoice = folder.path() + QStringLiteral("/soak.csv");
        desktop.suggestions.clear();
        window->findChild<QAction *>(QStringLiteral("mnuSaveCSV"))->trigger();
        QFile file(desktop.fileChoice);
        const bool same = file.open(QIODevice::ReadOnly) && file.readAll() == sweepAsCsv(*table());
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
            click(qPrintable(QStringLiteral("optSpeed_%1").arg(any(3))));
            return true;
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

    qint64 windowKb() const { return test::memoryKilobytes(QCoreApplication::applicationPid()); }
    qint64 serverKb() const { return test::memoryKilobytes(window->findChildren<QProcess *>().first()->processId()); }

    std::minstd_rand random;
    SweepGraph *graph = nullptr;
    QVector<int> latest;
    int vectors = 0;
    int doubled = 0;
    int lostCells = 0;
    int redraws = 0;
    int driftedPoints = 0;
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
    void manySweeps();
};

void TestSoak::manySweeps()
{
    const int wanted = fromEnvironment("CALVORN_SOAK_SWEEPS", 400);
    Soak soak;
    soak.start();
    // The caches of fonts and pictures fill first.
    qint64 windowKb = 0;
    qint64 serverKb = 0;
    while (soak.vectors < wanted) {
        if (windowKb == 0 && soak.vectors >= std::min(wanted / 2, 2'000)) {
            windowKb = soak.windowKb();
            serverKb = soak.serverKb();
        }
        QVERIFY(soak.awaitVectors(1 + soak.any(16)));
        QVERIFY(soak.act());
        QVERIFY2(soak.desktop.boxes.isEmpty(), qPrintable(soak.desktop.lastText()));
    }
    QVERIFY(soak.stop());
    const qint64 windowGrowth = soak.windowKb() - windowKb;
    const qint64 serverGrowth = soak.serverKb() - serverKb;
    const int vectors = soak.vectors;
    QTest::qWait(100);

    qInfo("%d sweeps, %d redraws, %d starts, %d exports; memory: window %+lld kB, server %+lld kB", soak.vectors,
          soak.redraws, soak.starts, soak.exports, windowGrowth, serverGrowth);
    QCOMPARE(soak.vectors, vectors); // nothing comes behind the end
    QCOMPARE(soak.completes, soak.starts);
    QCOMPARE(soak.errors, 0);
    QCOMPARE(soak.doubled, 0);
    QCOMPARE(soak.lostCells, 0);
    QVERIFY(soak.redraws > 0);
    QCOMPARE(soak.driftedPoints, 0);
    QVERIFY2(windowGrowth < kMostGrowthKb, qPrintable(QString::number(windowGrowth)));
    QVERIFY2(serverGrowth < kMostGrowthKb, qPrintable(QString::number(serverGrowth)));
}

QTEST_MAIN(TestSoak)
#include "test_soak.moc"
