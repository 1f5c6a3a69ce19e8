// SPDX-License-Identifier: MIT
// Opens, uses and reopens the Measure panel in the main window, as a user would.
#include "analysis/trace_file.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/quiet_time.h"
#include "tests/support/window_bench.h"

#include <QComboBox>
#include <QDockWidget>
#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>

#include <array>
#include <cmath>
#include <functional>
#include <numbers>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

constexpr double kVoltsPerCount = 0.00244;

// 1 to 5 MHz in steps of 10 kHz; a scale in dB relative to 1 V.
constexpr char kSettings[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n"
                             "[Calvorn]\r\nScale=1\r\nStart=1000000\r\nStop=5000000\r\nMax scaleDb=-60\r\n"
                             "Marker 1=2500000\r\nMarker 2=3500000\r\nMarker 3=-3\r\nMarker 4=-20\r\n";

QVector<int> counts(const std::function<double(int)> &countOfRow)
{
    QVector<int> made;
    for (int row = 1; row <= 400; ++row)
        made.append(static_cast<int>(std::nearbyint(countOfRow(row))));
    return made;
}

// A resonance at row 201 (3 MHz), with the half-power points 20 rows (200 kHz) on either side.
double resonance(int row)
{
    return 1000.0 / std::sqrt(1.0 + std::pow((row - 201) / 20.0, 2));
}

struct Bench : WindowBench
{
    Bench()
        : WindowBench(test::FakeServerControl::program(), kSettings)
    {
    }

    const SweepGraph &graph() const { return *find<SweepGraph>("picSweep"); }
    const PlotModel &plot() const { return graph().model(); }

    void deliver(const std::function<double(int)> &countOfRow) const
    {
        QSignalSpy drawn(&graph().redraws(), &RedrawTimer::fired);
        emit driver()->aVettore(counts(countOfRow));
        if (drawn.isEmpty() && !drawn.wait())
            qFatal("the sweep is not drawn");
    }

    // Waits until the range is planned, which happens shortly after the last key.
    void waitForRange(std::int32_t start, std::int32_t stop) const
    {
        const SweepAxis wanted{start, (stop - start) / 400};
        if (!QTest::qWaitFor([&] { return table()->axis() == wanted; }))
            qFatal("the range was not planned");
    }

    void openPanel() const { QTest::keyClick(window.get(), Qt::Key_M, Qt::ControlModifier); }
    void turnTo(int page) const { find<QTabWidget>("tabMeasure")->setCurrentIndex(page); }
    void trigger(const char *name) const
    {
        auto *action = window->findChild<QAction *>(QString::fromLatin1(name));
        if (!action)
            qFatal("there is no %s", name);
        action->trigger();
    }

    // Returns the number at the beginning of a read-out.
    double number(const char *name) const
    {
        QString digits;
        for (const QChar c : label(name))
            if (c.isDigit() || c == u'.' || c == u'-')
                digits += c;
            else if (c != u',')
                break;
        return digits.toDouble();
    }

    QByteArray settings() const
    {
        QFile file(folder.iniPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

class TestMeasurePanel : public QObject
{
    Q_OBJECT

private slots:
    void closedItLeavesEverythingAsItWas();
    void itIsOpenedByAKeyAndRemembered();
    void theBandwidthIsShown();
    void whatIsMissingSaysWhy();
    void theCurveIsShownRelativeToTheReference();
    void onTheLinearScaleItIsARatio();
    void outsideTheReferenceIsAGap();
    void aStoredTraceStaysWhereItBelongs();
    void aTraceIsSavedAndLoadedWithoutTheTable();
    void holdsAndAverageFollowTheSweeps();
    void anotherRangeStartsThemAnew();
    void buttonsMoveTheMarkers();
    void m1FollowsThePeak();
    void limitsAreJudged();
    void aClickAddsAPointToALimit();
    void limitsOfAnotherUnitAreNotJudged();
    void limitsAreSavedAndLoaded();
    void choicesAreKept();
    void aPictureShowsTracesAndLegend();
    void theWaysAreShort();
};

void TestMeasurePanel::closedItLeavesEverythingAsItWas()
{
    Bench bench;
    QVERIFY(!bench.isShown("dockMeasure"));
    bench.deliver(resonance);
    QVERIFY(bench.plot().relation.isEmpty());
    QVERIFY(bench.plot().moving.empty() && bench.plot().traces.empty() && bench.plot().limits.empty());
    QVERIFY(bench.plot().legend().empty());
    bench.window->close();
    QVERIFY(bench.settings().contains("[Calvorn]"));
    QVERIFY(!bench.settings().contains("[Measure]"));
}

void TestMeasurePanel::itIsOpenedByAKeyAndRemembered()
{
    Bench bench;
    bench.openPanel();
    QVERIFY(bench.isShown("dockMeasure"));
    QCOMPARE(bench.find<QTabWidget>("tabMeasure")->currentIndex(), 1);
    bench.window->close();
    bench.open();
    QVERIFY(bench.isShown("dockMeasure"));
    bench.openPanel();
    QVERIFY(!bench.isShown("dockMeasure"));
    bench.window->close();
    bench.open();
    QVERIFY(!bench.isShown("dockMeasure"));
}

void TestMeasurePanel::theBandwidthIsShown()
{
    const Bench bench;
    bench.deliver(resonance);
    bench.openPanel();
    QCOMPARE(bench.number("lblResult_peakFreq"), 3000000.0);
    // Rounding to whole counts and the 10 kHz step each change the bandwidth by less than 0.1 %.
    QVERIFY2(std::abs(bench.number("lblResult_bw3") - 400000.0) < 800.0, qPrintable(bench.label("lblResult_bw3")));
    QVERIFY2(std::abs(bench.number("lblResult_q") - 7.5) < 0.02, qPrintable(bench.label("lblResult_q")));
    // 2.44 V is 7.75 dB.
    QCOMPARE(bench.label("lblResult_peak"), QStringLiteral("7.7 dB"));
    // The results are updated immediately after the next sweep.
    bench.deliver([](int row) { return resonance(row + 50); });
    QCOMPARE(bench.number("lblResult_peakFreq"), 2500000.0);
    // Switches to other results and back.
    auto *kinds = bench.find<QComboBox>("cboResults");
    kinds->setCurrentIndex(1);
    QVERIFY(!bench.window->findChild<QWidget *>(QStringLiteral("lblResult_bw60")));
    QCOMPARE(bench.label("lblLevel_M1"), QStringLiteral("7.7 dB"));
    kinds->setCurrentIndex(0);
    QCOMPARE(bench.number("lblResult_peakFreq"), 2500000.0);
    QVERIFY2(std::abs(bench.number("lblResult_bw3") - 400000.0) < 800.0, qPrintable(bench.label("lblResult_bw3")));
}

void TestMeasurePanel::whatIsMissingSaysWhy()
{
    const Bench bench;
    bench.openPanel();
    QVERIFY2(bench.label("lblResult_bw3").startsWith(u'–'), qPrintable(bench.label("lblResult_bw3")));
    QVERIFY(bench.label("lblResult_bw3").contains(QStringLiteral("no sweep")));
    bench.deliver(resonance);
    QVERIFY(bench.label("lblResult_loss").contains(QStringLiteral("no reference")));
    QVERIFY(bench.label("lblResult_bw60").contains(QStringLiteral("outside the sweep range")));
}

void TestMeasurePanel::theCurveIsShownRelativeToTheReference()
{
    const Bench bench;
    bench.deliver([](int) { return 800.0; });
    bench.openPanel();
    bench.click("cmdNormalise");
    QCOMPARE(bench.label("Label5"), QStringLiteral("dB, relative"));
    bench.deliver([](int row) { return row <= 200 ? 400.0 : 200.0; });
    // -6 dB is half of the reference, -12 dB a quarter.
    QVERIFY(std::abs(bench.plot().live->amplitudes[0] + 6.0206) < 1e-3);
    QVERIFY(std::abs(bench.plot().live->amplitudes[399] + 12.0412) < 1e-3);
    // The table retains the measured values: 400 counts of 2.44 mV are -0.2 dB relative to 1 V.
    QCOMPARE(bench.table()->text(1, SweepTable::AmplitudeColumn), QStringLiteral("-0.2"));
    QVERIFY2(std::abs(bench.number("lblResult_loss") - 6.0) < 0.05, qPrintable(bench.label("lblResult_loss")));
    bench.click("cmdNormalise");
    QCOMPARE(bench.label("Label5"), QStringLiteral("dB"));
    QVERIFY(std::abs(bench.plot().live->amplitudes[0] + 0.2) < 0.01);
}

void TestMeasurePanel::onTheLinearScaleItIsARatio()
{
    const Bench bench;
    bench.trigger("mnuScalaLineare");
    bench.deliver([](int) { return 800.0; });
    bench.openPanel();
    bench.click("cmdNormalise");
    QCOMPARE(bench.label("Label5"), QStringLiteral("Ratio"));
    bench.deliver([](int) { return 200.0; });
    QVERIFY(std::abs(bench.plot().live->amplitudes[7] - 0.25) < 1e-6);
    QCOMPARE(bench.label("lblLevel_M1"), QStringLiteral("0.250"));
}

void TestMeasurePanel::outsideTheReferenceIsAGap()
{
    const Bench bench;
    bench.deliver([](int row) { return row == 5 ? 0.0 : 800.0; });
    bench.openPanel();
    bench.click("cmdNormalise");
    bench.deliver([](int) { return 400.0; });
    QVERIFY(std::isnan(bench.plot().live->amplitudes[4]));
    QVERIFY(!std::isnan(bench.plot().live->amplitudes[5]));
    QVERIFY(bench.isShown("lblReference"));
    QVERIFY(bench.label("lblReference").contains(QStringLiteral("below the detector's floor")));
    // In the range from 3 to 7 MHz, the reference ends at row 200.
    bench.type("txtStart", QStringLiteral("3000000"));
    bench.type("txtStop", QStringLiteral("7000000"));
    bench.waitForRange(3000000, 7000000);
    bench.deliver([](int) { return 400.0; });
    QVERIFY(!std::isnan(bench.plot().live->amplitudes[100]));
    QVERIFY(std::isnan(bench.plot().live->amplitudes[300]));
    QVERIFY(bench.label("lblReference").contains(QStringLiteral("has no data")));
}

void TestMeasurePanel::aStoredTraceStaysWhereItBelongs()
{
    const Bench bench;
    bench.deliver(resonance);
    bench.openPanel();
    bench.turnTo(0);
    bench.click("cmdStore_0");
    QCOMPARE(bench.text("txtTrace_0"), QStringLiteral("Trace 1"));
    bench.type("txtTrace_0", QStringLiteral("before"));
    bench.deliver([](int) { return 10.0; });
    QCOMPARE(bench.plot().traces.size(), std::size_t{1});
    QCOMPARE(bench.plot().traces[0].name, QStringLiteral("before"));
    // 1000 counts at row 201.
    const double peak = 20.0 * std::log10(1000.0 * kVoltsPerCount);
    QVERIFY(std::abs(bench.plot().traces[0].amplitudes[200] - peak) < 1e-6);
    // When the range changes, the trace remains at its own frequencies.
    bench.type("txtStart", QStringLiteral("2000000"));
    bench.waitForRange(2000000, 5000000);
    QCOMPARE(bench.plot().traces[0].axis.start, 1000000.0);
    QCOMPARE(bench.plot().xOf(3000000.0), 1.0 + (3000000.0 - 2000000.0) / bench.plot().axis.step);
    const std::vector<LegendEntry> legend = bench.plot().legend();
    QVERIFY(std::ranges::any_of(legend, [](const LegendEntry &entry) { return entry.name == u"before"; }));
    bench.click("chkShow_0");
    QVERIFY(bench.plot().traces.empty());
    bench.click("chkShow_0");
    QCOMPARE(bench.plot().traces.size(), std::size_t{1});
}

void TestMeasurePanel::aTraceIsSavedAndLoadedWithoutTheTable()
{
    Bench bench;
    bench.deliver(resonance);
    bench.openPanel();
    bench.turnTo(0);
    bench.click("cmdStore_2");
    QVERIFY(bench.find<QToolButton>("cmdTrace_2")->menu());
    QCOMPARE(bench.find<QToolButton>("cmdTrace_2")->menu()->actions().size(), 3);
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/cable.csv");
    bench.trigger("mnuSaveTrace_2");
    bench.deliver([](int) { return 10.0; });
    const QString cell = bench.table()->text(201, SweepTable::AmplitudeColumn);
    bench.trigger("mnuLoadTrace_3");
    QCOMPARE(bench.text("txtTrace_3"), QStringLiteral("cable"));
    QCOMPARE(bench.plot().traces.size(), std::size_t{2});
    const double peak = 20.0 * std::log10(1000.0 * kVoltsPerCount);
    QVERIFY(std::abs(bench.plot().traces[1].amplitudes[200] - peak) < 1e-6);
    QCOMPARE(bench.table()->text(201, SweepTable::AmplitudeColumn), cell);
    // A file that is not a sweep is reported and changes nothing.
    QFile file(bench.desktop.fileChoice);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("frequency\r\nnothing\r\n") > 0);
    file.close();
    bench.trigger("mnuLoadTrace_1");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY2(bench.desktop.lastText().contains(QStringLiteral("cable.csv")), qPrintable(bench.desktop.lastText()));
    QCOMPARE(bench.plot().traces.size(), std::size_t{2});
}

void TestMeasurePanel::holdsAndAverageFollowTheSweeps()
{
    const Bench bench;
    bench.openPanel();
    bench.turnTo(0);
    for (const char *name : {"chkMaxHold", "chkMinHold", "chkAverage"})
        bench.click(name);
    for (const double count : {100.0, 500.0, 300.0})
        bench.deliver([count](int) { return count; });
    const auto decibels = [](double count) { return 20.0 * std::log10(count * kVoltsPerCount); };
    // The curves are listed in painting order, from bottom to top.
    QCOMPARE(bench.plot().moving.size(), std::size_t{3});
    QVERIFY(std::abs(bench.plot().moving[0].amplitudes[9] - decibels(500.0)) < 1e-6);
    QVERIFY(std::abs(bench.plot().moving[1].amplitudes[9] - decibels(100.0)) < 1e-6);
    QVERIFY(std::abs(bench.plot().moving[2].amplitudes[9] - decibels(300.0)) < 1e-6);
    QCOMPARE(bench.label("lblAveraged"), QStringLiteral("3 so far"));
    // Another scale shows the same sweeps and does not count them again.
    bench.trigger("mnuScalaLineare");
    QTRY_VERIFY(std::abs(bench.plot().moving[2].amplitudes[9] - 300.0 * kVoltsPerCount) < 1e-6);
    QCOMPARE(bench.label("lblAveraged"), QStringLiteral("3 so far"));
    bench.click("cmdStartAnew");
    QVERIFY(bench.plot().moving.empty());
    bench.deliver([](int) { return 50.0; });
    QCOMPARE(bench.label("lblAveraged"), QStringLiteral("1 so far"));
}

void TestMeasurePanel::anotherRangeStartsThemAnew()
{
    const Bench bench;
    bench.openPanel();
    bench.turnTo(0);
    bench.click("chkMaxHold");
    bench.deliver([](int) { return 900.0; });
    bench.type("txtStop", QStringLiteral("9000000"));
    bench.waitForRange(1000000, 9000000);
    bench.deliver([](int) { return 100.0; });
    QVERIFY(std::abs(bench.plot().moving[0].amplitudes[9] - 20.0 * std::log10(100.0 * kVoltsPerCount)) < 1e-6);
}

void TestMeasurePanel::buttonsMoveTheMarkers()
{
    Bench bench;
    bench.openPanel();
    bench.click("cmdPeak");
    QCOMPARE(bench.desktop.beeps, 1); // there is no sweep yet
    bench.deliver([](int row) { return std::max(resonance(row), 0.5 * resonance(row + 100)); });
    bench.click("cmdPeak");
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("3,000,000"));
    bench.click("cmdPeakLeft");
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("2,000,000"));
    bench.click("cmdPeakRight");
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("3,000,000"));
    // The rows nearest to 2.8 and 3.2 MHz.
    bench.click("cmdPoints3");
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("2,800,000"));
    QCOMPARE(bench.text("txtM2X"), QStringLiteral("3,200,000"));
    bench.deliver([](int row) { return row == 301 ? 100.0 : 500.0; });
    bench.click("cmdMinimum");
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("4,000,000"));
    QCOMPARE(bench.desktop.beeps, 1);
}

void TestMeasurePanel::m1FollowsThePeak()
{
    const Bench bench;
    bench.openPanel();
    bench.click("chkTrackPeak");
    bench.deliver(resonance);
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("3,000,000"));
    bench.deliver([](int row) { return resonance(row - 30); });
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("3,300,000"));
    bench.click("chkTrackPeak");
    bench.deliver(resonance);
    QCOMPARE(bench.text("txtM1X"), QStringLiteral("3,300,000"));
}

void TestMeasurePanel::limitsAreJudged()
{
    Bench bench;
    bench.deliver([](int) { return 400.0; });
    bench.openPanel();
    bench.turnTo(2);
    bench.click("chkLimitBeep");
    bench.click("cmdFromLive");
    QVERIFY(bench.isChecked("chkLimits"));
    QCOMPARE(bench.label("lblVerdict"), QStringLiteral("PASS"));
    QCOMPARE(bench.plot().limits.size(), std::size_t{2});
    const auto *points = bench.find<QTableWidget>("tblLimits");
    QCOMPARE(points->rowCount(), 21);
    QCOMPARE(points->horizontalHeader()->length(), points->viewport()->width());
    bench.deliver([](int) { return 400.0; });
    QCOMPARE(bench.label("lblLimitCounts"), QStringLiteral("1 passed, 0 failed"));
    QVERIFY2(bench.label("lblWorst").contains(QStringLiteral("3.00 dB inside")), qPrintable(bench.label("lblWorst")));
    // Twice the amplitude at row 101 (2 MHz): 6 dB above the others, 3 dB outside the limit.
    bench.deliver([](int row) { return row == 101 ? 800.0 : 400.0; });
    QCOMPARE(bench.label("lblVerdict"), QStringLiteral("FAIL"));
    QVERIFY2(bench.label("lblWorst").contains(QStringLiteral("3.02 dB outside, at 2,000,000 Hz")),
             qPrintable(bench.label("lblWorst")));
    QCOMPARE(bench.label("lblLimitCounts"), QStringLiteral("1 passed, 1 failed"));
    QCOMPARE(bench.desktop.beeps, 1);
    bench.click("cmdResetCounts");
    QCOMPARE(bench.label("lblLimitCounts"), QStringLiteral("0 passed, 0 failed"));
}

void TestMeasurePanel::aClickAddsAPointToALimit()
{
    const Bench bench;
    bench.deliver([](int) { return 400.0; });
    bench.openPanel();
    bench.turnTo(2);
    const QString m1 = bench.text("txtM1X");
    bench.click("cmdClickPoint");
    auto *graph = bench.find<SweepGraph>("picSweep");
    for (const QPoint at : {QPoint(50, 60), QPoint(200, 60)})
        QTest::mouseClick(graph, Qt::LeftButton, {}, at);
    QCOMPARE(bench.text("txtM1X"), m1);
    const auto *points = bench.find<QTableWidget>("tblLimits");
    QCOMPARE(points->rowCount(), 2);
    QVERIFY(!points->item(0, 1)->text().isEmpty());
    QVERIFY(points->item(0, 2)->text().isEmpty());
    bench.click("cmdClickPoint");
    QTest::mouseClick(graph, Qt::LeftButton, {}, QPoint(100, 60));
    QVERIFY(bench.text("txtM1X") != m1);
    QCOMPARE(points->rowCount(), 2);
}

void TestMeasurePanel::limitsOfAnotherUnitAreNotJudged()
{
    const Bench bench;
    bench.deliver([](int) { return 400.0; });
    bench.openPanel();
    bench.turnTo(2);
    bench.click("cmdFromLive");
    QVERIFY(bench.isShown("lblVerdict"));
    bench.trigger("mnuScalaLineare");
    QVERIFY(!bench.isShown("lblVerdict"));
    QVERIFY(bench.label("lblWorst").contains(QStringLiteral("choose a dB scale")));
    QVERIFY(bench.plot().limits.empty());
    // On a scale relative to 10 V, the same sweep is 20 dB lower.
    bench.trigger("mnuScalaLogaritmica10");
    QCOMPARE(bench.label("lblVerdict"), QStringLiteral("FAIL"));
    bench.trigger("mnuScalaLogaritmica1");
    QCOMPARE(bench.label("lblVerdict"), QStringLiteral("PASS"));
    QCOMPARE(bench.label("lblLimitCounts"), QStringLiteral("0 passed, 0 failed"));
}

void TestMeasurePanel::limitsAreSavedAndLoaded()
{
    Bench bench;
    bench.deliver([](int) { return 400.0; });
    bench.openPanel();
    bench.turnTo(2);
    bench.click("cmdFromLive");
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/limits.csv");
    bench.click("cmdSaveLimits");
    const auto *points = bench.find<QTableWidget>("tblLimits");
    const int rows = points->rowCount();
    const QString upper = points->item(3, 1)->text();
    bench.find<QTableWidget>("tblLimits")->selectAll();
    bench.click("cmdRemovePoint");
    QCOMPARE(points->rowCount(), 0);
    bench.click("cmdLoadLimits");
    QCOMPARE(points->rowCount(), rows);
    QCOMPARE(points->item(3, 1)->text(), upper);
    // The limits are restored at the next start.
    bench.window->close();
    bench.open();
    QCOMPARE(bench.find<QTableWidget>("tblLimits")->rowCount(), rows);
    QVERIFY(bench.isChecked("chkLimits"));
    bench.desktop.fileChoice = bench.folder.iniPath();
    bench.click("cmdLoadLimits");
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY2(bench.desktop.lastText().contains(QStringLiteral("Calvorn.ini")), qPrintable(bench.desktop.lastText()));
    QCOMPARE(bench.find<QTableWidget>("tblLimits")->rowCount(), rows);
}

void TestMeasurePanel::choicesAreKept()
{
    Bench bench;
    bench.openPanel();
    bench.turnTo(0);
    bench.click("chkMinHold");
    bench.find<QSpinBox>("txtAverageOver")->setValue(77);
    bench.click("chkLegend");
    bench.turnTo(1);
    bench.find<QComboBox>("cboResults")->setCurrentIndex(2);
    auto *fixture = bench.find<QDoubleSpinBox>("txtFixture");
    fixture->setFocus();
    fixture->selectAll();
    QTest::keyClicks(fixture, QStringLiteral("12,5"));
    QTest::keyClick(fixture, Qt::Key_Tab);
    QCOMPARE(fixture->value(), 12.5);
    bench.click("chkTrackPeak");
    bench.window->close();
    bench.open();
    QVERIFY(bench.isChecked("chkMinHold"));
    QVERIFY(!bench.isChecked("chkMaxHold"));
    QVERIFY(!bench.isChecked("chkLegend"));
    QCOMPARE(bench.find<QSpinBox>("txtAverageOver")->value(), 77);
    QCOMPARE(bench.find<QComboBox>("cboResults")->currentIndex(), 2);
    QCOMPARE(bench.find<QDoubleSpinBox>("txtFixture")->value(), 12.5);
    QVERIFY(bench.isChecked("chkTrackPeak"));
    QVERIFY(bench.root()->findChild<QLabel *>(QStringLiteral("lblResult_rm")));
    // Other components' settings are unchanged.
    QCOMPARE(bench.folder.setting("Calvorn", "Start"), QStringLiteral("1000000"));
}

void TestMeasurePanel::aPictureShowsTracesAndLegend()
{
    Bench bench;
    bench.deliver(resonance);
    bench.openPanel();
    bench.turnTo(0);
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/alone.png");
    bench.trigger("mnuSavePicture");
    bench.click("cmdStore_0");
    bench.deliver([](int) { return 100.0; });
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/both.png");
    bench.trigger("mnuSavePicture");
    const auto blue = [](const QString &path) {
        const QImage image(path);
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (const QColor c = image.pixelColor(x, y); c.blue() > 180 && c.red() < 130 && c.green() > 130)
                    pixels += c == QColor(0x4F, 0xC3, 0xF7) ? 0 : 1; // excludes the markers, which are also blue
        return pixels;
    };
    const int alone = blue(bench.folder.path() + QStringLiteral("/alone.png"));
    const int both = blue(bench.folder.path() + QStringLiteral("/both.png"));
    QVERIFY2(both > alone + 200, qPrintable(QStringLiteral("%1, %2").arg(alone).arg(both)));
}

// The manual states these numbers of clicks and keys after the sweep.
void TestMeasurePanel::theWaysAreShort()
{
    {
        Bench bench;
        bench.deliver(resonance);
        bench.openPanel();
        QTRY_VERIFY(std::abs(bench.number("lblResult_bw3") - 400'000.0) < 4'000.0);
    }
    {
        Bench bench;
        bench.deliver(resonance);
        bench.openPanel();
        auto *pages = bench.find<QTabWidget>("tabMeasure");
        QTest::mouseClick(pages->tabBar(), Qt::LeftButton, {}, pages->tabBar()->tabRect(0).center());
        bench.click("cmdStore_0");
        bench.deliver([](int row) { return resonance(row - 30); });
        QCOMPARE(bench.plot().legend().size(), std::size_t{2});
        QCOMPARE(bench.plot().traces.size(), std::size_t{1});
    }
    {
        Bench bench;
        bench.deliver([](int) { return 800.0; });
        bench.openPanel();
        bench.click("cmdNormalise");
        bench.deliver([](int row) { return resonance(row) / 2.0; });
        QTRY_VERIFY(std::abs(bench.number("lblResult_loss") - 20.0 * std::log10(800.0 / 500.0)) < 0.1);
    }
}

QTEST_MAIN(TestMeasurePanel)
#include "test_measure_panel.moc"
