// SPDX-License-Identifier: MIT
#include "tests/support/crystal_sweep.h"
#include "tests/support/locales.h"
#include "tests/support/quiet_time.h"
#include "tests/support/walk_numbers.h"
#include "tests/support/window_bench.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>

#include <cmath>
#include <csignal>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

// The prepared settings, with the board at full speed.
QByteArray fastSettings()
{
    return test::ProgramFolder::preparedSettings().replace("Pace=real", "Pace=none");
}

QString realServer()
{
    return test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync"));
}

struct Bench : WindowBench
{
    explicit Bench(const QByteArray &settings = fastSettings())
        : WindowBench(realServer(), settings)
    {
    }

    double amplitude(int row) const { return test::readNumber(table()->text(row, 1)); }

    int peakRow() const { return test::peakRow(*table()); }
    double frequency(int row) const { return test::readNumber(table()->text(row, 0)); }

    bool waitForSweep() const
    {
        return QTest::qWaitFor([this] { return table()->text(200, 2) != QStringLiteral("0"); }, 10000);
    }

    // Returns the process id of this window's server, or 0.
    qint64 serverPid() const
    {
        const auto processes = station->instrument.server().findChildren<QProcess *>();
        return processes.isEmpty() ? 0 : processes.first()->processId();
    }
};

} // namespace

class TestSweepOnSimulatedBoard : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theFilterAppearsInTheTable_data() { test::addLocaleRows(); }
    void theFilterAppearsInTheTable();
    void sweepsRepeatUntilTheyAreStopped();
    void aScaleChangeConvertsWhatWasSwept();
    void aChangedRangeReplansTheRunningSweep();
    void speedsAndOutputsWhileSweeping();
    void aKilledServerIsToldOnceAndReplaced();
    void aHungServerIsEndedByTheTimeOut();
    void closingWhileASweepRunsEndsTheServer();
    void theLogEchoesTheSamples();
    void aFloodOfVectorsLeavesTheWindowResponsive();
};

void TestSweepOnSimulatedBoard::theFilterAppearsInTheTable()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    QCOMPARE(bench.desktop.boxes.size(), 0);
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    // The prepared device under test is a band-pass filter at 7.1 MHz.
    const double peak = bench.frequency(bench.peakRow());
    QVERIFY2(std::abs(peak - 7.1e6) < 400e3, qPrintable(QString::number(peak)));
    QVERIFY(bench.amplitude(bench.peakRow()) > 0.8);
    QVERIFY(bench.amplitude(1) < 0.02);
    QVERIFY(bench.amplitude(400) < 0.1);
    for (int row = 1; row <= 400; ++row) {
        const double count = test::readNumber(bench.table()->text(row, 2));
        QVERIFY(count >= 0 && count <= 1023);
        QVERIFY(std::abs(bench.amplitude(row) - count * 0.00244) < 0.0006);
    }
}

void TestSweepOnSimulatedBoard::sweepsRepeatUntilTheyAreStopped()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.isShown("cmdStop"));
    QVERIFY(!bench.window->findChild<QAction *>(QStringLiteral("mnuSetUp"))->isEnabled());
    QVERIFY(bench.waitForSweep());
    int sweeps = 0;
    connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] {
        ++sweeps;
        bench.desktop.ticks += 50;
    });
    QTRY_VERIFY_WITH_TIMEOUT(sweeps >= 20, 10000);
    QCOMPARE(bench.label("lblSweepTime"), QStringLiteral("50"));
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isShown("cmdStart"));
    QVERIFY(!bench.isShown("cmdStop"));
    QVERIFY(bench.window->findChild<QAction *>(QStringLiteral("mnuSetUp"))->isEnabled());
    QCoreApplication::processEvents();
    const int atTheEnd = sweeps;
    test::nothingHappensFor(200);
    QCOMPARE(sweeps, atTheEnd);
    QCOMPARE(bench.desktop.boxes.size(), 0);
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(sweeps > atTheEnd + 1, 5000);
}

void TestSweepOnSimulatedBoard::aScaleChangeConvertsWhatWasSwept()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isShown("cmdStart"));
    const int peak = bench.peakRow();
    const double volts = bench.amplitude(peak);
    const QString m3 = bench.text("txtM3Y");
    QCOMPARE(m3, QStringLiteral("0.500"));
    bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica1"))->trigger();
    QVERIFY(std::abs(bench.amplitude(peak) - 20 * std::log10(volts)) < 0.06);
    QCOMPARE(bench.text("txtM3Y"), QStringLiteral("-6.0"));
    QCOMPARE(bench.text("txtM4Y"), QStringLiteral("-1.9"));
    bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLogaritmica10dB"))->trigger();
    QVERIFY(std::abs(bench.amplitude(peak) - (20 * std::log10(volts) - 20)) < 0.06);
    QCOMPARE(bench.text("txtM4Y"), QStringLiteral("-21.9"));
    bench.window->findChild<QAction *>(QStringLiteral("mnuScalaLineare"))->trigger();
    QCOMPARE(bench.amplitude(peak), volts);
}

void TestSweepOnSimulatedBoard::aChangedRangeReplansTheRunningSweep()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    bench.type("txtStart", QStringLiteral("6000000"));
    bench.type("txtStop", QStringLiteral("8000000"));
    QTRY_COMPARE_WITH_TIMEOUT(bench.label("lblStart"), QStringLiteral("6,000,000"), 3000);
    // Every sweep that reaches the table after the change belongs to the new plan: its peak is at 7.1 MHz.
    int checked = 0;
    connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] {
        if (bench.table()->text(200, 2) == QStringLiteral("0"))
            return;
        const double peak = bench.frequency(bench.peakRow());
        QVERIFY2(std::abs(peak - 7.1e6) < 400e3, qPrintable(QString::number(peak)));
        ++checked;
    });
    QTRY_VERIFY_WITH_TIMEOUT(checked >= 5, 5000);
    QVERIFY(bench.isShown("cmdStop"));
    QCOMPARE(bench.text("txtStep"), QStringLiteral("5,000"));
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

void TestSweepOnSimulatedBoard::speedsAndOutputsWhileSweeping()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    bench.click("optSpeed_2");
    QCOMPARE(bench.configuration.sweepSpeed, std::int16_t{2});
    bench.click("cmdView_2");
    bench.click("chkAux1_0");
    bench.click("chkAux1_0");
    QCOMPARE(bench.configuration.aux1, std::int16_t{1});
    bench.click("optSpeed_0");
    int sweeps = 0;
    connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] { ++sweeps; });
    QTRY_VERIFY_WITH_TIMEOUT(sweeps >= 3, 10000);
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

void TestSweepOnSimulatedBoard::aKilledServerIsToldOnceAndReplaced()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    const qint64 first = bench.serverPid();
    QVERIFY(first > 0);
    kill(static_cast<pid_t>(first), SIGKILL);
    QTRY_VERIFY(bench.isShown("cmdStart"));
    test::nothingHappensFor(100);
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QCOMPARE(bench.desktop.boxes[0].icon, BoxIcon::Critical);
    QVERIFY(bench.desktop.lastText().startsWith(QStringLiteral("The acquisition server has ended unexpectedly.")));
    bench.click("cmdStart");
    QVERIFY(bench.isShown("cmdStop"));
    QVERIFY(bench.waitForSweep());
    QVERIFY(bench.serverPid() > 0 && bench.serverPid() != first);
    QCOMPARE(bench.desktop.boxes.size(), 1);
}

void TestSweepOnSimulatedBoard::aHungServerIsEndedByTheTimeOut()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    const qint64 first = bench.serverPid();
    kill(static_cast<pid_t>(first), SIGSTOP);
    QElapsedTimer clock;
    clock.start();
    bench.click("cmdStop");
    QVERIFY(clock.elapsed() < 6000);
    QTRY_VERIFY(bench.isShown("cmdStart"));
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY2(bench.desktop.lastText().contains(QStringLiteral("did not answer in time")),
             qPrintable(bench.desktop.lastText()));
    QVERIFY(kill(static_cast<pid_t>(first), 0) != 0);
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
}

void TestSweepOnSimulatedBoard::closingWhileASweepRunsEndsTheServer()
{
    Bench bench;
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    const qint64 pid = bench.serverPid();
    bench.window->close();
    QVERIFY(kill(static_cast<pid_t>(pid), 0) != 0);
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

void TestSweepOnSimulatedBoard::theLogEchoesTheSamples()
{
    Bench bench(fastSettings().replace("Log=0", "Log=1"));
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    QVERIFY(QRegularExpression(QStringLiteral("^400:\\d+$")).match(bench.text("txtRX")).hasMatch());
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isShown("cmdStart"));
}

void TestSweepOnSimulatedBoard::aFloodOfVectorsLeavesTheWindowResponsive()
{
    Bench bench;
    int vectors = 0;
    int redraws = 0;
    connect(bench.table(), &SweepTable::dataChanged, bench.window.get(), [&] { ++vectors; });
    connect(&bench.find<SweepGraph>("picSweep")->redraws(), &RedrawTimer::fired, bench.window.get(),
            [&] { ++redraws; });
    bench.click("cmdStart");
    QVERIFY(bench.waitForSweep());
    vectors = redraws = 0;
    // A 10 ms timer represents the user: it must fire, and without long delays.
    int turns = 0;
    qint64 longest = 0;
    QElapsedTimer sinceLast;
    sinceLast.start();
    QTimer person;
    connect(&person, &QTimer::timeout, this, [&] {
        longest = std::max(longest, sinceLast.restart());
        ++turns;
    });
    person.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(vectors > 100 && redraws > 20 && turns > 30, 30000);
    QVERIFY2(longest < 1000, qPrintable(QString::number(longest)));
    // Each slow vector causes one redraw, and another one may have been pending when counting began.
    QVERIFY2(redraws <= vectors + 1, qPrintable(QStringLiteral("%1 of %2").arg(redraws).arg(vectors)));
    bench.click("cmdStop");
    QTRY_VERIFY(bench.isShown("cmdStart"));
}

QTEST_MAIN(TestSweepOnSimulatedBoard)
#include "test_sweep_on_simulated_board.moc"
