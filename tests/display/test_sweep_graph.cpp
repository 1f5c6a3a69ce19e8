// SPDX-License-Identifier: MIT
#include "display/frequency_captions.h"
#include "display/plot/trace_styles.h"
#include "tests/display/display_bench.h"
#include "tests/support/paint_count.h"
#include "tests/support/quiet_time.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QToolTip>

#include <algorithm>
#include <cmath>

using namespace calvorn;
using calvorn::test::DisplayBench;

class TestSweepGraph : public QObject
{
    Q_OBJECT

private:
    // A graph that records its repaints.
    class WatchedGraph : public SweepGraph
    {
    public:
        using SweepGraph::SweepGraph;
        QList<QRect> painted;

    protected:
        void paintEvent(QPaintEvent *event) override
        {
            painted.append(event->rect());
            SweepGraph::paintEvent(event);
        }
    };

    static QImage grab(QWidget &widget) { return widget.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    static void fillVolts(SweepTable &table, const QString &text)
    {
        for (int row = 1; row <= kSweepPoints; ++row)
            table.setText(row, SweepTable::AmplitudeColumn, text);
    }

    static bool isYellowish(QRgb colour) { return qRed(colour) > 120 && qGreen(colour) > 120 && qBlue(colour) < 80; }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void curveHas399Segments_data() { test::addLocaleRows(); }
    void curveHas399Segments()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        DisplayBench bench(1);
        for (int row = 1; row <= kSweepPoints; ++row)
            bench.table.setText(row, SweepTable::AmplitudeColumn, test::inLocale(locale, QStringLiteral("-12.5")));
        bench.panel.graph().drawLine();
        const QPolygonF curve = bench.panel.graph().curve();
        QCOMPARE(curve.size(), 400);
        QCOMPARE(curve.first(), QPointF(1.0, 12500.0));
        QCOMPARE(curve.last(), QPointF(400.0, 12500.0));
    }

    void curvePixels()
    {
        Configuration configuration;
        configuration.maxScaleVolt = 2.0F;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        graph.inizializzaGraph();
        graph.resize(401, 401);
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
            graph.markers().setVisible(item, false);
        table.inizializzaGrid();
        fillVolts(table, QStringLiteral("1.096")); // 0.9 V below the top edge: row 180 of 400
        const QImage bare = grab(graph);
        QCOMPARE(bare.pixel(200, 37), qRgb(230, 0, 0));
        QCOMPARE(bare.pixel(50, 37), qRgb(0, 200, 0));
        QCOMPARE(bare.pixel(60, 37), qRgb(0, 100, 0));
        QCOMPARE(bare.pixel(0, 37), qRgb(0, 200, 0));
        QCOMPARE(bare.pixel(400, 37), qRgb(0, 200, 0));
        QCOMPARE(bare.pixel(55, 100), qRgb(0, 200, 0)); // a quarter down
        QCOMPARE(bare.pixel(55, 20), qRgb(0, 100, 0));  // a twentieth down
        QCOMPARE(bare.pixel(55, 37), qRgb(0, 0, 0));

        graph.drawLine();
        const QImage drawn = grab(graph);
        for (int x = 2; x < 400; ++x)
            QVERIFY2(isYellowish(drawn.pixel(x, 180)), qPrintable(QString::number(x)));
        QVERIFY(!isYellowish(drawn.pixel(0, 180))); // point 1 is at x = 1
        // The grid is intact next to the curve, and is restored when the curve is cleared.
        QCOMPARE(drawn.pixel(60, 37), qRgb(0, 100, 0));
        graph.clearCurve();
        QVERIFY(graph.curve().isEmpty());
        QCOMPARE(grab(graph), bare);
    }

    void redrawKeepsTheGrid()
    {
        DisplayBench bench;
        bench.show();
        const QImage before = grab(bench.panel.graph());
        fillVolts(bench.table, QStringLiteral("1.5"));
        bench.panel.graph().drawLine();
        QVERIFY(grab(bench.panel.graph()) != before);
        fillVolts(bench.table, QStringLiteral("0"));
        bench.panel.graph().drawLine();
        QCOMPARE(grab(bench.panel.graph()), before);
    }

    // The graph shows the cells as they were last drawn, even if they have changed since.
    void uncoveringTheWindowShowsTheCurveAgain()
    {
        DisplayBench bench;
        bench.show();
        fillVolts(bench.table, QStringLiteral("1.5"));
        bench.panel.graph().drawLine();
        const QImage drawn = grab(bench.panel.graph());
        fillVolts(bench.table, QStringLiteral("0.2"));
        bench.window.hide();
        bench.show();
        QCOMPARE(grab(bench.panel.graph()), drawn);
        bench.panel.graph().drawLine();
        QVERIFY(grab(bench.panel.graph()) != drawn);
    }

    void aBurstOfVectorsIsOneRedraw()
    {
        DisplayBench bench;
        QSignalSpy fired(&bench.panel.graph().redraws(), &RedrawTimer::fired);
        bench.table.setText(1, SweepTable::AmplitudeColumn, QStringLiteral("1.25"));
        for (int i = 0; i < 10; ++i)
            bench.panel.graph().redraws().arm();
        QTRY_COMPARE(fired.size(), 1);
        test::nothingHappensFor(50);
        QCOMPARE(fired.size(), 1);
        // One redraw draws the curve and updates the marker read-outs (both markers are at row 1 here).
        QCOMPARE(bench.panel.graph().curve().first(), QPointF(1.0, 1250.0));
        QCOMPARE(bench.text(QStringLiteral("txtM1Y")), QStringLiteral("1.25"));
        bench.panel.graph().redraws().arm();
        QTRY_COMPARE(fired.size(), 2);
    }

    // Sweeps more than one screen frame apart are redrawn separately, along with their read-outs.
    void aVectorIsDrawnBeforeTheNextPainting()
    {
        DisplayBench bench;
        bench.show();
        QSignalSpy fired(&bench.panel.graph().redraws(), &RedrawTimer::fired);
        for (int sweep = 1; sweep <= 5; ++sweep) {
            QTest::qSleep(16); // about one frame at 60 Hz
            bench.panel.graph().redraws().arm();
            QCOMPARE(fired.size(), sweep - 1); // never inside the procedure that stores the samples
            QCoreApplication::sendPostedEvents(&bench.panel.graph().redraws(), QEvent::MetaCall);
            QCOMPARE(fired.size(), sweep);
        }
        // The next sweep follows too soon: its redraw is delayed, not lost.
        bench.panel.graph().redraws().arm();
        QCoreApplication::sendPostedEvents(&bench.panel.graph().redraws(), QEvent::MetaCall);
        QTRY_COMPARE(fired.size(), 6);
    }

    void damagedCellsDoNotStopTheOthers()
    {
        DisplayBench bench;
        fillVolts(bench.table, QStringLiteral("1"));
        bench.table.setText(7, SweepTable::AmplitudeColumn, QStringLiteral("what?"));
        bench.table.setText(8, SweepTable::AmplitudeColumn, QStringLiteral("1e999"));
        bench.table.setText(9, SweepTable::AmplitudeColumn, QStringLiteral("1e300"));
        bench.panel.graph().drawLine();
        const QPolygonF curve = bench.panel.graph().curve();
        QCOMPARE(curve[6].y(), 0.0);
        QCOMPARE(curve[7].y(), 0.0);
        QCOMPARE(curve[9].y(), 1000.0);
        QVERIFY(!grab(bench.panel.graph()).isNull());
        QVERIFY(bench.desktop.boxes.isEmpty());
    }

    void aMarkerRepaintsOnlyItself()
    {
        Configuration configuration;
        configuration.maxScaleVolt = 2.0F;
        SweepTable table(configuration);
        Markers markers;
        WatchedGraph graph(configuration, table, markers);
        graph.inizializzaGraph();
        table.inizializzaGrid();
        graph.drawLine();
        graph.moveLine(GraphItem::M1, 100);
        graph.show();
        QVERIFY(QTest::qWaitForWindowExposed(&graph));
        const auto isQuiet = [&graph] {
            graph.painted.clear();
            test::nothingHappensFor(50);
            return graph.painted.isEmpty();
        };
        QTRY_VERIFY(isQuiet());
        const QPolygonF curve = graph.curve();
        fillVolts(table, QStringLiteral("1"));
        graph.moveLine(GraphItem::M1, 110);
        QTRY_VERIFY(!graph.painted.isEmpty());
        for (const QRect &area : graph.painted)
            QVERIFY2(area.width() < 80, qPrintable(QString::number(area.width())));
        QCOMPARE(graph.curve(), curve); // no cell was read
        QCOMPARE(graph.line(GraphItem::M1).x1, 110.0);
        QCOMPARE(graph.line(GraphItem::M1).x2, 110.0);
        QCOMPARE(graph.label(GraphItem::M1).left, 112.0);
        const int x = static_cast<int>(0.5 + 110.0 / 400.0 * (graph.width() - 1));
        QCOMPARE(grab(graph).pixel(x, 350), graph.line(GraphItem::M1).colour);
    }

    void eachKindOfLineHasItsColour()
    {
        DisplayBench bench;
        const SweepGraph &graph = bench.panel.graph();
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2})
            QCOMPARE(graph.line(item).colour, qRgb(0x4f, 0xc3, 0xf7));
        for (const GraphItem item : {GraphItem::M3, GraphItem::M4})
            QCOMPARE(graph.line(item).colour, qRgb(0xff, 0x9d, 0xe0));
        for (const GraphItem item : {GraphItem::CursorV, GraphItem::CursorH})
            QCOMPARE(graph.line(item).colour, qRgb(255, 255, 255));
        // On paper, the average and hold traces are dark.
        QCOMPARE(inked(kAverageStyle.colour, GraphInk::Paper), QColor(0x40, 0x40, 0x40));
        QCOMPARE(inked(kMaxHoldStyle.colour, GraphInk::Paper), QColor(0x8a, 0x3a, 0x00));
        QCOMPARE(inked(kMinHoldStyle.colour, GraphInk::Paper), QColor(0x00, 0x69, 0x5c));
    }

    void theCaptionsAboveMoveWithTheirMarkers()
    {
        DisplayBench bench;
        bench.show();
        auto *captions = bench.find<FrequencyCaptions>(QStringLiteral("frameCaptions"));
        QVERIFY(captions);
        test::PaintCount painted;
        captions->installEventFilter(&painted);
        const auto isQuiet = [&painted] {
            painted.count = 0;
            test::nothingHappensFor(50);
            return painted.count == 0;
        };
        QTRY_VERIFY(isQuiet());
        bench.panel.graph().moveLine(GraphItem::M1, 300);
        QTRY_VERIFY(painted.count > 0);
    }

    void captionsStandAtTheirLines()
    {
        DisplayBench bench(1);
        SweepGraph &graph = bench.panel.graph();
        bench.show();
        graph.moveLine(GraphItem::M3, 20000.0);
        const double y = 0.5 + 20.0 / 40.0 * (graph.height() - 1);
        QVERIFY(std::abs(graph.labelRect(GraphItem::M3).center().y() - y) < 0.5);
        // At the right edge, there is no room to the right of the line: the caption is to its left, legible above the
        // plot.
        graph.moveLine(GraphItem::M2, 400);
        QCOMPARE(graph.label(GraphItem::M2).left, 402.0);
        QVERIFY(QRectF(0, -graph.heightOfCaptions(), graph.width(), graph.heightOfCaptions())
                    .contains(graph.labelRect(GraphItem::M2)));
        // A line below the range has no caption.
        graph.moveLine(GraphItem::M4, 80000.0);
        QVERIFY(graph.labelRect(GraphItem::M4).isEmpty());
        QVERIFY(!graph.line(GraphItem::CursorV).visible);
        graph.markers().setVisible(GraphItem::CursorV, true);
        QVERIFY(graph.line(GraphItem::CursorV).visible);
    }

    void anotherFontMovesTheCaptions()
    {
        DisplayBench bench(1);
        SweepGraph &graph = bench.panel.graph();
        bench.show();
        graph.moveLine(GraphItem::M3, 20000.0);
        const double height = graph.labelRect(GraphItem::M3).height();
        QFont large = graph.font();
        large.setPointSizeF(2.0 * large.pointSizeF());
        graph.setFont(large);
        QVERIFY(graph.labelRect(GraphItem::M3).height() > 1.5 * height);
        const double y = 0.5 + 20.0 / 40.0 * (graph.height() - 1);
        QVERIFY(std::abs(graph.labelRect(GraphItem::M3).center().y() - y) < 0.5);
    }

    void theToolTipStandsBelowTheCurve()
    {
        DisplayBench bench;
        SweepGraph &graph = bench.panel.graph();
        bench.show();
        const QPoint place = graph.rect().center();
        QHelpEvent asked(QEvent::ToolTip, place, graph.mapToGlobal(place));
        QCoreApplication::sendEvent(&graph, &asked);
        QTRY_VERIFY(QToolTip::isVisible());
        QCOMPARE(QToolTip::text(), graph.toolTip());
        const auto windows = QApplication::topLevelWidgets();
        const auto tip = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
            return window->inherits("QTipLabel") && window->isVisible();
        });
        QVERIFY(tip != windows.end());
        QVERIFY((*tip)->y() > graph.mapToGlobal(QPoint(0, graph.height() - 1)).y());
        QToolTip::hideText();
    }

    void theArrowsMoveThePointer()
    {
        DisplayBench bench;
        SweepGraph &graph = bench.panel.graph();
        bench.show();
        QPointF at;
        connect(&graph, &SweepGraph::mouseMoved, this, [&at](double x, double y) { at = {x, y}; });
        const auto pressed = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            QTest::keyClick(&graph, key, modifiers);
            return at;
        };
        const QPointF middle = pressed(Qt::Key_Right);
        QCOMPARE(middle.x(), 201.0);
        QCOMPARE(pressed(Qt::Key_Left).x(), 200.0);
        const double step = -2000.0 / graph.height();
        QCOMPARE(pressed(Qt::Key_Down).y(), middle.y() + step);
        QCOMPARE(pressed(Qt::Key_Up).y(), middle.y());
        QCOMPARE(pressed(Qt::Key_Down, Qt::ControlModifier).y(), middle.y() + 10.0 * step);
        QCOMPARE(pressed(Qt::Key_Home).x(), 1.0);
        QCOMPARE(pressed(Qt::Key_End).x(), 400.0);
    }

    void aPictureIsWhatTheScreenShows()
    {
        DisplayBench bench(1);
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        for (int row = 1; row <= kSweepPoints; ++row)
            bench.table.setText(row, SweepTable::AmplitudeColumn, QString::number(-(row % 60)));
        graph.drawLine();
        graph.moveLine(GraphItem::M1, 120);
        graph.moveLine(GraphItem::M2, 300);
        graph.moveLine(GraphItem::M3, 15000.0);
        const QImage screen = grab(graph);
        QImage picture(graph.size(), QImage::Format_RGB32);
        QPainter painter(&picture);
        painter.setFont(graph.font());
        const PlotPainter::Surface surface{QSizeF(graph.size()), 1.0, 1.0, 1.0, true};
        PlotPainter(graph.model(), surface).paint(painter);
        painter.end();
        QCOMPARE(picture, screen);
        // Marks the area of the curve for the comparison below.
        QImage besideTheCurve(graph.size(), QImage::Format_RGB32);
        besideTheCurve.fill(Qt::white);
        QPainter pen(&besideTheCurve);
        pen.setPen(QPen(Qt::black, 4));
        QPolygonF line;
        for (const QPointF &point : graph.curve())
            line.append(
                {0.5 + point.x() / 400.0 * (graph.width() - 1), 0.5 + point.y() / 40000.0 * (graph.height() - 1)});
        pen.drawPolyline(line);
        pen.end();
        // On paper, the same drawing uses a different ink.
        QPainter paper(&picture);
        PlotPainter(graph.model(), surface, GraphInk::Paper).paint(paper);
        paper.end();
        int bare = 0;
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                if (screen.pixel(x, y) != qRgb(0, 0, 0) || besideTheCurve.pixelColor(x, y) != Qt::white)
                    continue;
                QCOMPARE(picture.pixel(x, y), qRgb(255, 255, 255));
                ++bare;
            }
        }
        QVERIFY(bare > screen.width() * screen.height() / 2);
        QVERIFY(picture != screen);
    }

    void theCurveStaysInsideAPicture()
    {
        Configuration configuration;
        configuration.scaleType = 1;
        configuration.maxScaleDb = -40;
        PlotModel model;
        model.scale = GraphCoordinates(configuration);
        const PlotPainter painter(model, {QSizeF(400, 300)});
        // Values below, within and far above the range.
        const std::vector<double> values{-50.0, -20.0, -30.0, 90.0, 90.0, -10.0, -99.0};
        const QList<QPolygonF> runs = painter.runsOf(painter.placedCurve(values));
        QCOMPARE(runs.size(), 2);
        for (const QPolygonF &run : runs)
            for (const QPointF &point : run)
                QVERIFY2(point.y() >= 0.0 && point.y() <= 300.0, qPrintable(QString::number(point.y())));
        QCOMPARE(runs[0].first().y(), 300.0);
        QCOMPARE(runs[0].last().y(), 0.0);
        QCOMPARE(runs[1].last().y(), 300.0);
    }

    void startsAtItsInitialSize()
    {
        Configuration configuration;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        graph.inizializzaGraph();
        QCOMPARE(graph.size(), QSize(534, 400));
        QCOMPARE(graph.sizeHint(), QSize(534, 400));
        QCOMPARE(graph.objectName(), QStringLiteral("picSweep"));
        QVERIFY(graph.findChild<QTimer *>(QStringLiteral("timerGrafico")));
    }
};

QTEST_MAIN(TestSweepGraph)
#include "test_sweep_graph.moc"
