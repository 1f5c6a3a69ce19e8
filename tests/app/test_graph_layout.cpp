// SPDX-License-Identifier: MIT
// Layout of the graph and its surroundings in the window, and dragging the markers.
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/own_plot.h"
#include "tests/support/quiet_time.h"
#include "tests/support/walk_hands.h"
#include "tests/support/walk_numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace calvorn;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;
using calvorn::test::WindowBench;

namespace {

constexpr std::array kMarkers{GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4};
constexpr std::array kMarkerBoxes{WalkBox::M1X, WalkBox::M2X, WalkBox::M3Y, WalkBox::M4Y};

// Row r is at 1 MHz + (r - 1) x 10 kHz.
QByteArray settings(const QByteArray &more, const char *interfaceType = "2", bool log = true)
{
    return QByteArray("[Config]\r\nInterface=") + interfaceType +
           "\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n[Debug]\r\nLog=" + (log ? "1" : "0") +
           "\r\n[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=100\r\n"
           "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\nMarker 1=1500000\r\nMarker 2=3000000\r\n" +
           more;
}

const QByteArray kLinear = "Scale=0\r\nMax scaleV=2.5\r\nMarker 3=0.5\r\nMarker 4=1.5\r\n";
const QByteArray kDecibels = "Scale=1\r\nMax scaleDb=-60\r\nMarker 3=-10\r\nMarker 4=-40\r\n";

struct Bench : WindowBench
{
    WalkHands hands{*this};

    explicit Bench(const QByteArray &text)
        : WindowBench(test::FakeServerControl::program(), text)
    {
        hands.settle();
    }

    SweepGraph *graph() const { return hands.graph(); }
    GraphLine line(GraphItem item) const { return graph()->line(item); }
    double position(GraphItem item) const { return isVertical(item) ? line(item).x1 : line(item).y1; }
    QImage image(const QWidget *widget) const
    {
        return const_cast<QWidget *>(widget)->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    test::OwnPlot plot() const { return {configuration, graph()->size()}; }
    QPoint pixel(double x, double y) const { return plot().pixel(x, y); }
    // Returns a point on a marker's line, away from the other markers.
    QPoint gripOf(GraphItem marker) const
    {
        const QPoint at = pixel(line(marker).x1, line(marker).y1);
        return isVertical(marker) ? QPoint(at.x(), graph()->height() / 2) : QPoint(graph()->width() - 60, at.y());
    }
    void grab(GraphItem marker, QPoint to) const
    {
        const QPoint from = gripOf(marker);
        QTest::mousePress(graph(), Qt::LeftButton, {}, from);
        WalkHands::moveMouse(graph(), (from + to) / 2, Qt::LeftButton);
        WalkHands::moveMouse(graph(), to, Qt::LeftButton);
    }
    void drop(QPoint at) const { QTest::mouseRelease(graph(), Qt::LeftButton, {}, at); }

    // Returns the area of the graph affected by a line.
    QRect paintedBy(GraphItem item) const
    {
        const QImage with = image(graph());
        graph()->markers().setVisible(item, false);
        const QImage without = image(graph());
        graph()->markers().setVisible(item, true);
        QRect changed;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                if (with.pixel(x, y) != without.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
        return changed;
    }

    // Returns the row of the cross or, if there is no cross, of the mouse pointer.
    int cursorRow() const
    {
        return configuration.cursorMode != 0 ? static_cast<int>(line(GraphItem::CursorV).x1) : mouseRow;
    }
    void moveMouse(const QPoint &at)
    {
        WalkHands::moveMouse(graph(), at, Qt::NoButton);
        mouseRow = static_cast<int>(std::lround(plot().rowAt(at.x())));
    }
    int mouseRow = 1;
    const QString &cell(SweepTable::Column column) const { return table()->text(cursorRow(), column); }
    bool crossRidesOnTheCurve() const
    {
        const double amplitude = test::readNumber(cell(SweepTable::AmplitudeColumn));
        return line(GraphItem::CursorH).y1 == plot().yOf(amplitude);
    }
};

} // namespace

class TestGraphLayout : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theGraphStartsInItsOwnSize_data();
    void theGraphStartsInItsOwnSize();
    void theDigitBarsStandOverTheirDigits_data();
    void theDigitBarsStandOverTheirDigits();

    void theCaptionsStandInTheStripAboveThePlot();
    void theCaptionsNeverCoverEachOther();
    void theCaptionsArePaintedAboveThePlotOnly();
    void theStripFollowsTheMarkers();

    void escapeCancelsADrag_data();
    void escapeCancelsADrag();
    void aMarkerStopsAtTheEdge_data();
    void aMarkerStopsAtTheEdge();

    void theCursorIsReadOutAnew_data();
    void theCursorIsReadOutAnew();

    void theButtonOfTheShownViewIsBold();
};

void TestGraphLayout::theGraphStartsInItsOwnSize_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QByteArray>("interfaceType");
    QTest::addColumn<bool>("log");
    const std::array<std::pair<const char *, QLocale>, 3> locales{
        {{"en_US", QLocale(QLocale::English, QLocale::UnitedStates)},
         {"it_IT", QLocale(QLocale::Italian, QLocale::Italy)},
         {"de_DE", QLocale(QLocale::German, QLocale::Germany)}}};
    for (const auto &[name, locale] : locales)
        for (const char *interfaceType : {"1", "2", "3"})
            for (const bool log : {false, true})
                QTest::addRow("%s, interface %s%s", name, interfaceType, log ? ", test panel" : "")
                    << locale << QByteArray(interfaceType) << log;
}

void TestGraphLayout::theGraphStartsInItsOwnSize()
{
    QFETCH(QLocale, locale);
    QFETCH(QByteArray, interfaceType);
    QFETCH(bool, log);
    QLocale::setDefault(locale);
    const Bench bench(settings(kLinear, interfaceType.constData(), log));
    QCOMPARE(bench.window->size(), QSize(800, 600));
    QCOMPARE(bench.graph()->size(), QSize(534, 400));
    // The graph takes up the added space.
    bench.window->resize(1000, 700);
    QCoreApplication::processEvents();
    QCOMPARE(bench.graph()->size(), QSize(734, 500));
}

void TestGraphLayout::theDigitBarsStandOverTheirDigits_data()
{
    theGraphStartsInItsOwnSize_data();
}

void TestGraphLayout::theDigitBarsStandOverTheirDigits()
{
    QFETCH(QLocale, locale);
    QFETCH(QByteArray, interfaceType);
    QFETCH(bool, log);
    QLocale::setDefault(locale);
    const Bench bench(settings(kLinear, interfaceType.constData(), log));
    for (const char *name : {"Start", "Stop"}) {
        const auto bar = [&](int digit) {
            return bench.find(qPrintable(QStringLiteral("VScroll%1_%2").arg(QString::fromLatin1(name)).arg(digit)));
        };
        for (int digit = 1; digit < 9; ++digit) {
            const int distance = bar(digit - 1)->x() - bar(digit)->x();
            QCOMPARE(distance, digit % 3 == 0 ? 24 : 16);
            QVERIFY(bar(digit)->x() >= 0);
            QVERIFY(bar(digit)->width() <= 16);
        }
        // Turning the wheel over a digit in the box steps that digit.
        auto *box = bench.find<QLineEdit>(qPrintable(QStringLiteral("txt") + QString::fromLatin1(name)));
        const double before = test::readNumber(box->text());
        for (const int digit : {0, 3, 6}) {
            const QPoint over(box->mapFromGlobal(bar(digit)->mapToGlobal(bar(digit)->rect().center())).x(),
                              box->height() / 2);
            QWheelEvent turn(over, box->mapToGlobal(over), {}, QPoint(0, 120), Qt::NoButton, {}, Qt::NoScrollPhase,
                             false);
            QApplication::sendEvent(box, &turn);
        }
        QCOMPARE(test::readNumber(box->text()), before + 1001001.0);
    }
}

void TestGraphLayout::theCaptionsStandInTheStripAboveThePlot()
{
    const Bench bench(settings(kLinear));
    SweepGraph *graph = bench.graph();
    const QWidget *strip = bench.find("frameCaptions");
    const QRect place(strip->mapTo(bench.window.get(), QPoint()), strip->size());
    const QPoint plot = graph->mapTo(bench.window.get(), QPoint());
    QCOMPARE(place.left(), plot.x());
    QCOMPARE(place.width(), graph->width());
    QCOMPARE(place.top() + place.height(), plot.y());
    const QWidget *unit = bench.find("Label5");
    QVERIFY(!place.intersects(QRect(unit->mapTo(bench.window.get(), QPoint()), unit->size())));
    // The other marker is moved out of the way.
    for (const auto &[marker, other, far] :
         {std::tuple(GraphItem::M1, GraphItem::M2, 400), std::tuple(GraphItem::M2, GraphItem::M1, 400)}) {
        int beside = 0;
        for (int row = 1; row <= 400; ++row) {
            graph->moveLine(marker, row);
            graph->moveLine(other, row < 200 ? far : 1);
            const QRectF caption = graph->labelRect(marker);
            QVERIFY(!caption.isEmpty());
            QVERIFY2(caption.left() >= 0.0 && caption.right() <= graph->width() && caption.bottom() <= 0.0 &&
                         caption.top() >= -strip->height(),
                     qPrintable(QString::number(row)));
            const double wanted = bench.plot().x(row + 2.0);
            if (wanted + caption.width() <= graph->width()) {
                QVERIFY2(std::abs(caption.left() - wanted) < 0.01, qPrintable(QString::number(row)));
                ++beside;
            } else {
                const double line = bench.plot().x(row);
                QVERIFY2(caption.right() <= line, qPrintable(QString::number(row)));
            }
        }
        QVERIFY2(beside > 360, qPrintable(QString::number(beside)));
    }
}

void TestGraphLayout::theCaptionsNeverCoverEachOther()
{
    const Bench bench(settings(kLinear));
    SweepGraph *graph = bench.graph();
    const QRectF strip(0, -bench.find("frameCaptions")->height(), graph->width(),
                       bench.find("frameCaptions")->height());
    for (int m1 = 1; m1 <= 400; ++m1) {
        graph->moveLine(GraphItem::M1, m1);
        for (int m2 = 1; m2 <= 400; ++m2) {
            graph->moveLine(GraphItem::M2, m2);
            const QRectF first = graph->labelRect(GraphItem::M1);
            const QRectF second = graph->labelRect(GraphItem::M2);
            const bool right = strip.contains(first) && strip.contains(second) && !first.intersects(second) &&
                               !first.isEmpty() && !second.isEmpty();
            if (!right)
                QFAIL(qPrintable(QStringLiteral("rows %1 and %2").arg(m1).arg(m2)));
            // The caption on the left belongs to the line on the left.
            if (m1 != m2)
                QCOMPARE(first.left() < second.left(), m1 < m2);
        }
    }
}

void TestGraphLayout::theCaptionsArePaintedAboveThePlotOnly()
{
    const Bench bench(settings(kLinear));
    SweepGraph *graph = bench.graph();
    const QWidget *strip = bench.find("frameCaptions");
    for (const auto &[m1, m2] : {std::pair(51, 201), std::pair(399, 400), std::pair(1, 2), std::pair(200, 200)}) {
        graph->moveLine(GraphItem::M1, m1);
        graph->moveLine(GraphItem::M2, m2);
        // The plot contains only the lines, without captions.
        for (const GraphItem marker : {GraphItem::M1, GraphItem::M2}) {
            if (m1 == m2)
                continue;
            const QRect painted = bench.paintedBy(marker);
            QCOMPARE(painted.width(), 1);
            QCOMPARE(painted.height(), graph->height());
            QCOMPARE(painted.left(), bench.pixel(graph->line(marker).x1, 0.0).x());
        }
        // The strip contains only the captions.
        const QImage image = bench.image(strip);
        const QRgb background = strip->palette().color(QPalette::Window).rgb();
        std::array<int, 2> inked{};
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QPointF at(x + 0.5, y + 0.5 - image.height());
                const bool first = graph->labelRect(GraphItem::M1).contains(at);
                const bool second = graph->labelRect(GraphItem::M2).contains(at);
                if (first || second)
                    inked[second ? 1 : 0] += qGreen(image.pixel(x, y)) > qRed(image.pixel(x, y)) + 50 ? 1 : 0;
                else
                    QCOMPARE(image.pixel(x, y), background);
            }
        QVERIFY2(inked[0] > 15 && inked[1] > 15, qPrintable(QStringLiteral("%1 %2").arg(inked[0]).arg(inked[1])));
    }
}

void TestGraphLayout::theStripFollowsTheMarkers()
{
    struct Watcher : QObject
    {
        int paintings = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            paintings += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
    const Bench bench(settings(kLinear));
    Watcher watcher;
    bench.find("frameCaptions")->installEventFilter(&watcher);
    // After the window is shown, the strip repaints only if something changes.
    const auto isQuiet = [&] {
        watcher.paintings = 0;
        test::nothingHappensFor(50);
        return watcher.paintings == 0;
    };
    QTRY_VERIFY(isQuiet());
    QTest::mouseClick(bench.graph(), Qt::LeftButton, {}, QPoint(300, 100));
    QTRY_VERIFY(watcher.paintings > 0);
    watcher.paintings = 0;
    bench.hands.typeOver(WalkBox::M2X, QStringLiteral("4000000"));
    bench.hands.key(Qt::Key_Tab);
    QTRY_VERIFY(watcher.paintings > 0);
    watcher.paintings = 0;
    bench.window->resize(900, 650);
    QTRY_VERIFY(watcher.paintings > 0);
}

void TestGraphLayout::escapeCancelsADrag_data()
{
    QTest::addColumn<QByteArray>("scale");
    QTest::addColumn<QString>("focus");
    for (const auto &[name, scale] : {std::pair("linear", kLinear), std::pair("dB", kDecibels)})
        for (const char *focus : {"txtM3Y", "txtStart", "lstLOG", "picSweep", "cmdStart"})
            QTest::addRow("%s, focus in %s", name, focus) << scale << QString::fromLatin1(focus);
}

void TestGraphLayout::escapeCancelsADrag()
{
    QFETCH(QByteArray, scale);
    QFETCH(QString, focus);
    const Bench bench(settings(scale));
    for (std::size_t i = 0; i < kMarkers.size(); ++i) {
        bench.find(qPrintable(focus))->setFocus(Qt::TabFocusReason);
        const GraphItem marker = kMarkers[i];
        const QLineEdit *box = bench.hands.box(kMarkerBoxes[i]);
        const QString textBefore = box->text();
        std::array<double, 4> before{};
        for (std::size_t j = 0; j < 4; ++j)
            before[j] = bench.position(kMarkers[j]);
        const QPoint to = bench.gripOf(marker) + (isVertical(marker) ? QPoint(70, 0) : QPoint(0, 40));
        bench.grab(marker, to);
        QVERIFY(bench.position(marker) != before[i]);
        bench.hands.key(Qt::Key_Escape);
        const auto isAsBefore = [&] {
            for (std::size_t j = 0; j < 4; ++j)
                if (bench.position(kMarkers[j]) != before[j])
                    return false;
            return test::readNumber(box->text()) == test::readNumber(textBefore);
        };
        QVERIFY(isAsBefore());
        WalkHands::moveMouse(bench.graph(), to + QPoint(9, 9), Qt::LeftButton);
        QVERIFY(isAsBefore());
        bench.drop(to + QPoint(9, 9));
        QVERIFY(isAsBefore());
        bench.hands.key(Qt::Key_Tab);
        QVERIFY(isAsBefore());
        // The next drag is not cancelled.
        bench.grab(marker, to);
        bench.drop(to);
        QVERIFY(bench.position(marker) != before[i]);
        // Escape does not move a dropped marker.
        const double dropped = bench.position(marker);
        bench.hands.key(Qt::Key_Escape);
        QCOMPARE(bench.position(marker), dropped);
    }
    QVERIFY(bench.window->isVisible());
}

void TestGraphLayout::aMarkerStopsAtTheEdge_data()
{
    QTest::addColumn<QByteArray>("scale");
    for (const char *volts : {"0.05", "1", "2.5", "3.33", "10"})
        QTest::addRow("%s V", volts) << QByteArray("Scale=0\r\nMarker 3=") + QByteArray::number(0.3 * atof(volts)) +
                                            "\r\nMarker 4=" + QByteArray::number(0.7 * atof(volts)) +
                                            "\r\nMax scaleV=" + volts + "\r\n";
    for (const char *scale : {"1", "2", "4"})
        for (const char *bottom : {"-1", "-7", "-60", "-90"})
            QTest::addRow("scale %s, %s dB", scale, bottom)
                << QByteArray("Marker 3=") + QByteArray::number(0.3 * atof(bottom)) +
                       "\r\nMarker 4=" + QByteArray::number(0.7 * atof(bottom)) + "\r\nScale=" + scale +
                       "\r\nMax scaleDb=" + bottom + "\r\n";
}

void TestGraphLayout::aMarkerStopsAtTheEdge()
{
    QFETCH(QByteArray, scale);
    const Bench bench(settings(scale));
    const QRect plot = bench.graph()->rect();
    const double low = std::min(bench.plot().top(), bench.plot().bottom());
    const double high = std::max(bench.plot().top(), bench.plot().bottom());
    for (const GraphItem marker : kMarkers) {
        for (const bool farSide : {true, false}) {
            const QPoint grip = bench.gripOf(marker);
            const QPoint to = isVertical(marker) ? QPoint(farSide ? plot.right() + 70 : -70, grip.y())
                                                 : QPoint(grip.x(), farSide ? plot.bottom() + 70 : -70);
            bench.grab(marker, to);
            for (int held = 1; held >= 0; --held) {
                if (!held)
                    bench.drop(to);
                const double at = bench.position(marker);
                if (isVertical(marker))
                    QCOMPARE(at, farSide ? 400.0 : 1.0);
                else
                    QVERIFY2(at >= low && at <= high, qPrintable(QString::number(at)));
                const QRect painted = bench.paintedBy(marker);
                QVERIFY2(!painted.isEmpty(), "the line is not visible");
                // The distance between the line and the edge is at most one step of the line's box.
                const double unit = bench.configuration.scaleType == 0 ? 1.0 : 100.0;
                const double pixels = 2.0 + unit / std::abs(high - low) * plot.height();
                const int gap = isVertical(marker) ? (farSide ? plot.right() - painted.right() : painted.left())
                                                   : (farSide ? plot.bottom() - painted.bottom() : painted.top());
                QVERIFY2(gap <= pixels, qPrintable(QStringLiteral("%1 > %2").arg(gap).arg(pixels)));
            }
            QVERIFY(bench.graph()->markerNear(bench.line(marker).x1, bench.line(marker).y1).has_value());
        }
        // Moves the marker out of the way of the next one.
        bench.graph()->moveLine(marker, isVertical(marker) ? 150.0 : (low + high) / 2.0);
    }
}

void TestGraphLayout::theCursorIsReadOutAnew_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("cursorMode");
    QTest::addColumn<QByteArray>("scale");
    for (const QLocale &locale :
         {QLocale(QLocale::English, QLocale::UnitedStates), QLocale(QLocale::Italian, QLocale::Italy)})
        for (const int mode : {0, 1})
            for (const auto &[name, scale] : {std::pair("linear", kLinear), std::pair("dB", kDecibels)})
                QTest::addRow("%s, cursor %d, %s", qPrintable(locale.name()), mode, name) << locale << mode << scale;
}

void TestGraphLayout::theCursorIsReadOutAnew()
{
    QFETCH(QLocale, locale);
    QFETCH(int, cursorMode);
    QFETCH(QByteArray, scale);
    QLocale::setDefault(locale);
    Bench bench(settings("Cursor mode=" + QByteArray::number(cursorMode) + "\r\n" + scale));
    bench.click("cmdDraw");
    bench.moveMouse(QPoint(267, 90));
    const int row = bench.cursorRow();
    QString former;
    const auto isReadOut = [&](const char *after) {
        QVERIFY2(bench.cursorRow() == row, after);
        QCOMPARE(bench.text("txtX"), bench.cell(SweepTable::FrequencyColumn));
        if (cursorMode == 0)
            return;
        QVERIFY2(bench.crossRidesOnTheCurve(), after);
        // Amplitudes imported from a file may be in volts on any scale.
        const double amplitude = test::readNumber(bench.cell(SweepTable::AmplitudeColumn));
        QCOMPARE(bench.text("txtY"), test::shownAmplitude(bench.configuration.scaleType == 0, amplitude));
    };
    isReadOut("the mouse");
    former = bench.text("txtX");
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("2000000"));
    bench.hands.key(Qt::Key_Tab);
    bench.hands.letTimePass();
    QVERIFY(bench.text("txtX") != former);
    isReadOut("a change of the range");
    // "Draw" fills the rows at random: one row may remain the same, but not all of them.
    const auto drawn = [&] {
        QStringList rows;
        for (int drawnRow = 1; drawnRow <= 400; ++drawnRow)
            rows.append(bench.table()->text(drawnRow, SweepTable::AmplitudeColumn));
        return rows;
    };
    const QStringList before = drawn();
    bench.click("cmdDraw");
    QVERIFY(drawn() != before);
    isReadOut("Draw");
    former = bench.text("txtX");
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/sweep.csv");
    QFile file(bench.desktop.fileChoice);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(test::walk_files::content(test::walk_files::Good, 0, 0.00244, 0.0));
    file.close();
    bench.hands.key(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(bench.text("txtX") != former);
    isReadOut("an import");
    bench.click("cmdDraw");
    bench.click("cmdClear");
    isReadOut("Clear");

    bench.click("cmdDraw");
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica10"));
    QCOMPARE(bench.text("txtX") + bench.text("txtY"), QString());
    QVERIFY(cursorMode == 0 || bench.crossRidesOnTheCurve());
    bench.hands.choose(QStringLiteral("mnuScalaLineare"));
    QVERIFY(cursorMode == 0 || bench.crossRidesOnTheCurve());
}

void TestGraphLayout::theButtonOfTheShownViewIsBold()
{
    const Bench bench(settings(kLinear));
    const auto button = [&](int view) {
        return bench.find<QPushButton>(qPrintable(QStringLiteral("cmdView_%1").arg(view)));
    };
    const auto darkest = [&](int view) {
        const QImage image = bench.image(button(view));
        int lightness = 255;
        // Examines only the caption, not the frame.
        for (int y = 6; y < image.height() - 6; ++y)
            for (int x = 6; x < image.width() - 6; ++x)
                lightness = std::min(lightness, qGray(image.pixel(x, y)));
        return lightness;
    };
    std::array<QRect, 4> places{};
    for (int view = 0; view < 4; ++view)
        places[std::size_t(view)] = button(view)->geometry();
    for (const int shown : {0, 1, 2, 3, 0}) {
        if (!bench.isShown(qPrintable(QStringLiteral("frameView_%1").arg(shown))))
            bench.click(qPrintable(QStringLiteral("cmdView_%1").arg(shown)));
        QCoreApplication::processEvents();
        for (int view = 0; view < 4; ++view) {
            QCOMPARE(button(view)->isEnabled(), view != shown);
            QCOMPARE(button(view)->font().bold(), view == shown);
            QCOMPARE(button(view)->geometry(), places[std::size_t(view)]);
            // The caption fits, whether bold or not.
            const QString caption = QString(button(view)->text()).remove(u'&');
            QVERIFY(button(view)->fontMetrics().horizontalAdvance(caption) <= button(view)->width() - 8);
        }
        QVERIFY2(darkest(shown) <= darkest(shown == 0 ? 1 : 0) + 8, qPrintable(QString::number(darkest(shown))));
    }
}

QTEST_MAIN(TestGraphLayout)
#include "test_graph_layout.moc"
