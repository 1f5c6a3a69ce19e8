// SPDX-License-Identifier: MIT
// The kept picture of the plot: soft edges as wide as a line, and a new curve in place of the old one without a trace.
#include "display/plot/plot_image.h"

#include <QPolygonF>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace calvorn;

namespace {

constexpr QRgb kInk = qRgb(255, 255, 0);
constexpr int kWidth = 61;
constexpr int kHeight = 40;

QImage blackGrid()
{
    QImage grid(kWidth, kHeight, QImage::Format_RGB32);
    grid.fill(Qt::black);
    return grid;
}

// Every pixel another, so that one that is put back wrongly is seen.
QImage colourfulGrid()
{
    QImage grid(kWidth, kHeight, QImage::Format_RGB32);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            grid.setPixel(x, y, qRgb(x, y, (x * 7 + y * 13) % 100));
    return grid;
}

// How much of each pixel of a column the curve covers, added up, in pixels.
double coverOf(const QImage &image, int column)
{
    double sum = 0.0;
    for (int y = 0; y < kHeight; ++y)
        sum += qRed(image.pixel(column, y)) / 255.0;
    return sum;
}

QPolygonF randomCurve(QRandomGenerator &random)
{
    QPolygonF points;
    // Some of it lies outside.
    for (int x = 1; x < kWidth; x += 2)
        points.append({static_cast<double>(x), random.bounded(60.0) - 10.0});
    return points;
}

} // namespace

class TestPlotImage : public QObject
{
    Q_OBJECT

private slots:
    void aFlatLineIsSharp()
    {
        PlotImage plot;
        QVERIFY(plot.isNull());
        plot.setGrid(blackGrid(), 1, kInk);
        QVERIFY(!plot.isNull());
        plot.setCurve(QPolygonF{{10.0, 5.0}, {20.0, 5.0}});
        for (int x = 0; x < kWidth; ++x)
            for (int y = 0; y < kHeight; ++y)
                QCOMPARE(plot.image().pixel(x, y), y == 5 && x >= 10 && x <= 20 ? kInk : qRgb(0, 0, 0));
    }

    void betweenTwoRowsItIsShared()
    {
        PlotImage plot;
        plot.setGrid(blackGrid(), 1, kInk);
        plot.setCurve(QPolygonF{{10.0, 5.25}, {20.0, 5.25}});
        QCOMPARE(plot.image().pixel(15, 4), qRgb(0, 0, 0));
        QCOMPARE(plot.image().pixel(15, 5), qRgb(191, 191, 0));
        QCOMPARE(plot.image().pixel(15, 6), qRgb(63, 63, 0));
        QCOMPARE(plot.image().pixel(15, 7), qRgb(0, 0, 0));
    }

    void aLineIsEquallyThickAtEverySlope_data()
    {
        QTest::addColumn<int>("thickness");
        QTest::addColumn<double>("slope");
        for (const int thickness : {1, 2, 3})
            for (const double slope : {0.0, 0.1, 0.5, 1.0, -0.7})
                QTest::addRow("%d wide, slope %g", thickness, slope) << thickness << slope;
    }
    void aLineIsEquallyThickAtEverySlope()
    {
        QFETCH(int, thickness);
        QFETCH(double, slope);
        PlotImage plot;
        plot.setGrid(blackGrid(), thickness, kInk);
        plot.setCurve(QPolygonF{{10.0, 20.0 - 10.0 * slope}, {30.0, 20.0 + 10.0 * slope}});
        // Cut along a column, a slanted line is longer than it is thick.
        const double expected = thickness * std::sqrt(1.0 + slope * slope);
        for (int x = 13; x < 28; ++x)
            QVERIFY2(std::abs(coverOf(plot.image(), x) - expected) < 0.03,
                     qPrintable(QString::number(coverOf(plot.image(), x))));
    }

    void aStepHasNoGap_data()
    {
        QTest::addColumn<int>("thickness");
        QTest::newRow("1") << 1;
        QTest::newRow("2") << 2;
    }
    void aStepHasNoGap()
    {
        QFETCH(int, thickness);
        PlotImage plot;
        plot.setGrid(blackGrid(), thickness, kInk);
        plot.setCurve(QPolygonF{{10.0, 5.0}, {20.0, 5.0}, {20.5, 35.0}, {30.0, 35.0}});
        for (int y = 6; y < 35; ++y) {
            double across = 0.0;
            for (int x = 15; x < 26; ++x)
                across += qRed(plot.image().pixel(x, y)) / 255.0;
            QVERIFY2(across >= thickness, qPrintable(QString::number(y)));
        }
    }

    void whatLiesOutsideIsCutOff()
    {
        PlotImage plot;
        plot.setGrid(blackGrid(), 1, kInk);
        plot.setCurve(QPolygonF{{0.0, -16000.0}, {9.75, -16000.0}, {10.25, 16000.0}, {60.0, 16000.0}});
        for (int x = 0; x < kWidth; ++x)
            QCOMPARE(coverOf(plot.image(), x), x == 10 ? static_cast<double>(kHeight) : 0.0);
        // On the edges a line is whole.
        plot.setCurve(QPolygonF{{0.0, 0.0}, {30.0, 0.0}, {31.0, kHeight - 1.0}, {60.0, kHeight - 1.0}});
        QCOMPARE(plot.image().pixel(0, 0), kInk);
        QCOMPARE(plot.image().pixel(60, kHeight - 1), kInk);
    }

    void anOldCurveLeavesNoTrace()
    {
        QRandomGenerator random(1);
        for (const int thickness : {1, 2}) {
            PlotImage plot;
            plot.setGrid(colourfulGrid(), thickness, kInk);
            for (int i = 0; i < 50; ++i) {
                const QPolygonF curve = randomCurve(random);
                plot.setCurve(curve);
                PlotImage fresh;
                fresh.setGrid(colourfulGrid(), thickness, kInk);
                fresh.setCurve(curve);
                QCOMPARE(plot.image(), fresh.image());
            }
            plot.setCurve({});
            QCOMPARE(plot.image(), colourfulGrid());
        }
    }

    void tellsWhatHasChanged()
    {
        QRandomGenerator random(2);
        PlotImage plot;
        plot.setGrid(colourfulGrid(), 1, kInk);
        QVERIFY(plot.setCurve({}).isEmpty());
        for (int i = 0; i < 50; ++i) {
            const QImage before = plot.image().copy();
            const QPolygonF curve = i % 5 == 4 ? QPolygonF() : randomCurve(random);
            const QRegion changed = plot.setCurve(curve);
            QVERIFY(QRegion(plot.image().rect()).subtracted(changed).united(changed) == QRegion(plot.image().rect()));
            for (int y = 0; y < kHeight; ++y)
                for (int x = 0; x < kWidth; ++x)
                    if (before.pixel(x, y) != plot.image().pixel(x, y))
                        QVERIFY(changed.contains(QPoint(x, y)));
            QVERIFY(plot.setCurve(curve).isEmpty());
        }
        // A small change is told as a small one.
        plot.setCurve(QPolygonF{{0.0, 20.0}, {60.0, 20.0}});
        const QRegion changed = plot.setCurve(QPolygonF{{0.0, 20.0}, {40.0, 20.0}, {42.0, 22.0}, {60.0, 20.0}});
        QVERIFY(changed.boundingRect().left() >= 30 && changed.boundingRect().top() >= 19);
        QVERIFY(changed.boundingRect().bottom() <= 24);
    }

    void steepFlanksAreToldNarrowly()
    {
        const auto peaksAt = [](double left, double right) {
            QPolygonF curve;
            for (const double x : {left, right})
                curve << QPointF(x - 5.0, 180.0) << QPointF(x, 10.0) << QPointF(x + 5.0, 180.0);
            return curve;
        };
        QImage grid(300, 200, QImage::Format_RGB32);
        grid.fill(Qt::black);
        PlotImage plot;
        plot.setGrid(grid, 1, kInk);
        plot.setCurve(peaksAt(50.0, 240.0));
        const QRegion changed = plot.setCurve(peaksAt(52.0, 242.0));
        QVERIFY(changed.contains(QPoint(52, 15)));
        QVERIFY(changed.contains(QPoint(242, 15)));
        // Neither what lies between the peaks nor the ground beside them.
        QVERIFY(!changed.intersects(QRect(60, 0, 172, 200)));
        QVERIFY(!changed.intersects(QRect(0, 0, 44, 200)));
        QVERIFY(!changed.intersects(QRect(0, 182, 300, 18)));
        int area = 0;
        for (const QRect &part : changed)
            area += part.width() * part.height();
        QVERIFY2(area < 2 * 14 * 172, qPrintable(QString::number(area)));
    }
};

QTEST_APPLESS_MAIN(TestPlotImage)
#include "test_plot_image.moc"
