// SPDX-License-Identifier: MIT
#include "display/plot/marker_readings.h"
#include "display/plot/plot_painter.h"
#include "tests/support/locales.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>

using namespace calvorn;
using calvorn::test::inLocale;

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

// 0 to -40 dB, rows at 1.000 MHz, 1.010 MHz, ... 4.990 MHz; one pixel per row and per 0.1 dB.
struct Bench
{
    Configuration configuration;
    PlotModel model;
    PlotPainter::Surface surface{QSizeF(401, 401), 1.0, 1.0, 1.0, true};

    Bench()
    {
        configuration.scaleType = 1;
        configuration.maxScaleDb = -40;
        model.scale = GraphCoordinates(configuration);
        model.axis = {1e6, 10e3};
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
            model.markers[item].isVisible = false;
        model.hasLegend = false;
    }

    QImage painted(GraphInk ink = GraphInk::Screen) const
    {
        QImage image(401, 401, QImage::Format_RGB32);
        QPainter painter(&image);
        PlotPainter(model, surface, ink).paint(painter);
        return image;
    }
};

PlotTrace traceOf(PlotAxis axis, std::vector<double> amplitudes, QRgb colour, Qt::PenStyle line = Qt::SolidLine)
{
    return {QStringLiteral("a trace"), {colour, line}, axis, std::move(amplitudes)};
}

// Returns the columns in which a pixel row has this colour, excluding antialiased edges.
QList<int> columnsOf(const QImage &image, int row, QRgb colour)
{
    const auto isNear = [](int a, int b) { return std::abs(a - b) < 70; };
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, row);
        if (isNear(qRed(pixel), qRed(colour)) && isNear(qGreen(pixel), qGreen(colour)) &&
            isNear(qBlue(pixel), qBlue(colour)))
            columns.append(x);
    }
    return columns;
}

} // namespace

class TestPlotPainter : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    // A trace is positioned by its frequencies, not by its sample numbers.
    void aTraceLiesAtItsOwnFrequencies()
    {
        Bench bench;
        // 2.000 to 2.995 MHz in steps of 5 kHz: rows 101 to 200.5, at -20.3 dB.
        bench.model.traces.push_back(traceOf({2e6, 5e3}, std::vector<double>(200, -20.3), qRgb(0, 160, 255)));
        const PlotPainter painter(bench.model, bench.surface);
        const QList<QPolygonF> pieces = painter.placedTrace(bench.model.traces[0]);
        QCOMPARE(pieces.size(), 1);
        QCOMPARE(pieces[0].size(), 200);
        // Row r is at the middle of pixel r, and one dB is ten pixels.
        QCOMPARE(pieces[0].first(), QPointF(101.5, 203.5));
        QCOMPARE(pieces[0].last(), QPointF(201.0, 203.5));
        const QImage image = bench.painted();
        const QList<int> columns = columnsOf(image, 203, qRgb(0, 160, 255));
        QVERIFY2(columns.size() > 95 && columns.first() >= 101 && columns.last() <= 201,
                 qPrintable(QString::number(columns.size())));
    }

    void aTraceOfAnotherRangeIsCutAtTheEdges()
    {
        Bench bench;
        // 0.5 to 6.49 MHz: beyond both edges of the plot.
        std::vector<double> amplitudes;
        for (int i = 0; i < 600; ++i)
            amplitudes.push_back(-10.0 - i / 60.0);
        bench.model.traces.push_back(traceOf({0.5e6, 10e3}, amplitudes, qRgb(255, 0, 255)));
        const PlotPainter painter(bench.model, bench.surface);
        for (const QPolygonF &run : painter.runsOf(painter.placedTrace(bench.model.traces[0])[0])) {
            QCOMPARE(run.first().x(), 0.0);
            QCOMPARE(run.last().x(), 401.0);
            // The left edge is at sample 48.5, where the trace has fallen by 48.5 steps of 1/60 dB; one dB is ten
            // pixels.
            QVERIFY(std::abs(run.first().y() - (100.5 + 10.0 * 48.5 / 60.0)) < 0.1);
        }
        // A trace entirely outside the range is not painted.
        bench.model.traces = {traceOf({50e6, 10e3}, amplitudes, qRgb(255, 0, 255))};
        const Bench empty;
        QCOMPARE(bench.painted(), empty.painted());
        // A descending sweep gives the same curve.
        bench.model.traces = {traceOf({4.99e6, -10e3}, std::vector<double>(400, -5.0), qRgb(255, 0, 255))};
        const QImage falling = bench.painted();
        bench.model.traces = {traceOf({1e6, 10e3}, std::vector<double>(400, -5.0), qRgb(255, 0, 255))};
        QCOMPARE(bench.painted(), falling);
        QVERIFY(falling != empty.painted());
    }

    void gapsStayEmpty()
    {
        Bench bench;
        std::vector<double> amplitudes(400, -20.0);
        for (std::size_t i = 100; i < 200; ++i)
            amplitudes[i] = kGap;
        bench.model.traces.push_back(traceOf(bench.model.axis, amplitudes, qRgb(0, 160, 255)));
        const PlotPainter painter(bench.model, bench.surface);
        const QList<QPolygonF> pieces = painter.placedTrace(bench.model.traces[0]);
        QCOMPARE(pieces.size(), 2);
        QCOMPARE(pieces[0].size(), 100);
        QCOMPARE(pieces[1].size(), 200);
        const Bench empty;
        const QImage image = bench.painted();
        const QImage bare = empty.painted();
        for (int x = 103; x < 199; ++x)
            QCOMPARE(image.pixel(x, 200), bare.pixel(x, 200));
        QVERIFY(image.pixel(250, 200) != bare.pixel(250, 200));
        // Neither a trace with only gaps nor one without samples is painted.
        for (const auto &samples : {std::vector<double>(400, kGap), std::vector<double>()}) {
            bench.model.traces = {traceOf(bench.model.axis, samples, qRgb(0, 160, 255))};
            QCOMPARE(bench.painted(), bare);
        }
    }

    // Without a trace there is no legend. Otherwise the legend is in the upper right corner and shows a sample of
    // each line.
    void theLegendNamesTheCurves()
    {
        Bench bench;
        bench.model.hasLegend = true;
        bench.model.live = traceOf(bench.model.axis, std::vector<double>(400, -35.0), kCurveColour);
        const QFont font = QGuiApplication::font();
        QVERIFY(PlotPainter(bench.model, bench.surface).legendRect(font).isEmpty());
        bench.model.traces.push_back(traceOf(bench.model.axis, std::vector<double>(400, -38.0), qRgb(0, 160, 255)));
        const QRectF place = PlotPainter(bench.model, bench.surface).legendRect(font);
        QVERIFY(place.right() < 401.0 && place.right() > 380.0 && place.top() < 20.0);
        const auto pixelsOf = [&](QRgb colour) {
            qsizetype pixels = 0;
            const QImage image = bench.painted();
            for (int row = static_cast<int>(place.top()); row < static_cast<int>(place.bottom()); ++row)
                pixels += columnsOf(image, row, colour).size();
            return pixels;
        };
        // Each line sample is 26 pixels long.
        QVERIFY(pixelsOf(kCurveColour) >= 26);
        QVERIFY(pixelsOf(qRgb(0, 160, 255)) >= 26);
        bench.model.hasLegend = false;
        QCOMPARE(pixelsOf(qRgb(0, 160, 255)), 0);
    }

    void aLimitIsALineThroughItsPoints()
    {
        Bench bench;
        bench.model.limits.push_back(
            {QStringLiteral("mask"), {qRgb(255, 80, 0), Qt::SolidLine}, {{1e6, -30.2}, {3e6, -30.2}, {3e6, -10.2}}});
        const QImage image = bench.painted();
        const QList<int> columns = columnsOf(image, 302, qRgb(255, 80, 0));
        QVERIFY2(columns.size() > 195, qPrintable(QString::number(columns.size())));
        QVERIFY(std::abs(columns.last() - 201) <= 1);
        QVERIFY(columnsOf(image, 150, qRgb(255, 80, 0)).contains(201));
        // A dashed line covers fewer pixels, and looks different on paper.
        bench.model.limits[0].style.line = Qt::DashLine;
        QVERIFY(columnsOf(bench.painted(), 302, qRgb(255, 80, 0)).size() < columns.size() * 9 / 10);
        QVERIFY(bench.painted(GraphInk::Paper) != bench.painted());
    }

    void theLiveCurveLiesOnTop()
    {
        Bench bench;
        bench.model.traces.push_back(traceOf(bench.model.axis, std::vector<double>(400, -20.0), qRgb(0, 160, 255)));
        bench.model.live = traceOf(bench.model.axis, std::vector<double>(400, -20.0), kCurveColour);
        QVERIFY(columnsOf(bench.painted(), 200, kCurveColour).size() > 390);
        bench.model.live.reset();
        QVERIFY(columnsOf(bench.painted(), 200, kCurveColour).isEmpty());
    }

    // No other trace can be placed on an axis without a step, as in a file whose rows all have the same frequency.
    void anAxisWithoutAStepShowsTheLiveCurveAlone()
    {
        Bench bench;
        const QImage bare = bench.painted();
        bench.model.axis = {};
        bench.model.traces.push_back(traceOf({1e6, 10e3}, std::vector<double>(400, -20.0), qRgb(0, 160, 255)));
        bench.model.limits.push_back({QStringLiteral("mask"), {}, {{1e6, -30.0}, {3e6, -30.0}}});
        QCOMPARE(bench.painted(), bare);
        bench.model.live = traceOf({}, std::vector<double>(400, -20.0), kCurveColour);
        QVERIFY(bench.painted() != bare);
    }

    void absurdSamplesStopNothing()
    {
        Bench bench;
        std::vector<double> amplitudes(400, -20.0);
        amplitudes[3] = 1e300;
        amplitudes[4] = -1e300;
        amplitudes[5] = std::numeric_limits<double>::infinity();
        bench.model.traces.push_back(traceOf({1e6, 1e300}, amplitudes, qRgb(0, 160, 255)));
        bench.model.traces.push_back(traceOf(bench.model.axis, amplitudes, qRgb(255, 0, 255)));
        QVERIFY(!columnsOf(bench.painted(), 200, qRgb(255, 0, 255)).isEmpty());
    }

    void theMarkersRead_data() { test::addLocaleRows(); }
    void theMarkersRead()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Configuration configuration;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 25000;
        SweepTable table(configuration);
        table.inizializzaGrid();
        table.setText(41, SweepTable::AmplitudeColumn, inLocale(locale, QStringLiteral("0.750")));
        WindowSettings settings;
        settings.marker1 = QStringLiteral("1990001"); // between two rows
        settings.marker2 = inLocale(locale, QStringLiteral("99,000,000"));
        settings.marker3 = inLocale(locale, QStringLiteral("0.5"));
        settings.marker4 = QStringLiteral("what?");
        const MarkerSet markers = markersOf(settings, table);
        QCOMPARE(markers.row(GraphItem::M1), 41);
        QCOMPARE(markers.row(GraphItem::M2), 400);
        const MarkerTexts texts = markerTexts(table, markers, true);
        QCOMPARE(texts.m1x, inLocale(locale, QStringLiteral("2,000,000")));
        QCOMPARE(texts.m1y, inLocale(locale, QStringLiteral("0.750")));
        QCOMPARE(texts.m2x, inLocale(locale, QStringLiteral("10,975,000")));
        QCOMPARE(texts.m2m1, inLocale(locale, QStringLiteral("8,975,000")));
        QCOMPARE(texts.m3y, inLocale(locale, QStringLiteral("0.500")));
        QCOMPARE(texts.m4y, inLocale(locale, QStringLiteral("0.000")));
        QCOMPARE(texts.m4m3, inLocale(locale, QStringLiteral("0.500")));
    }
};

QTEST_MAIN(TestPlotPainter)
#include "test_plot_painter.moc"
