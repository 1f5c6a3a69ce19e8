// SPDX-License-Identifier: MIT
// The stored plot image: the curve's line width, and a new curve that leaves no trace of the old one.
#include "display/plot/plot_image.h"

#include <QPolygonF>
#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

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

// Every pixel has a different colour, so an incorrectly restored pixel is detected.
QImage colourfulGrid()
{
    QImage grid(kWidth, kHeight, QImage::Format_RGB32);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            grid.setPixel(x, y, qRgb(x, y, (x * 7 + y * 13) % 100));
    return grid;
}

// Returns how many pixels of a column the curve covers in total.
double coverOf(const QImage &image, int column)
{
    double sum = 0.0;
    for (int y = 0; y < kHeight; ++y)
        sum += qRed(image.pixel(column, y)) / 255.0;
    return sum;
}

QRegion show(PlotImage &plot, const QPolygonF &points)
{
    return plot.setCurves(std::array{PlotImage::Curve{points, kInk}});
}

QPolygonF randomCurve(QRandomGenerator &random)
{
    QPolygonF points;
    // Some points lie outside the image.
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
        plot.setGrid(blackGrid(), 1);
        QVERIFY(!plot.isNull());
        show(plot, QPolygonF{{10.0, 5.0}, {20.0, 5.0}});
        for (int x = 0; x < kWidth; ++x)
            for (int y = 0; y < kHeight; ++y)
                QCOMPARE(plot.image().pixel(x, y), y == 5 && x >= 10 && x <= 20 ? kInk : qRgb(0, 0, 0));
    }

    void betweenTwoRowsItIsShared()
    {
        PlotImage plot;
        plot.setGrid(blackGrid(), 1);
        show(plot, QPolygonF{{10.0, 5.25}, {20.0, 5.25}});
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
        plot.setGrid(blackGrid(), thickness);
        show(plot, QPolygonF{{10.0, 20.0 - 10.0 * slope}, {30.0, 20.0 + 10.0 * slope}});
        // In a column, a slanted line covers more pixels than its thickness.
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
        plot.setGrid(blackGrid(), thickness);
        show(plot, QPolygonF{{10.0, 5.0}, {20.0, 5.0}, {20.5, 35.0}, {30.0, 35.0}});
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
        plot.setGrid(blackGrid(), 1);
        show(plot, QPolygonF{{0.0, -16000.0}, {9.75, -16000.0}, {10.25, 16000.0}, {60.0, 16000.0}});
        for (int x = 0; x < kWidth; ++x)
            QCOMPARE(coverOf(plot.image(), x), x == 10 ? static_cast<double>(kHeight) : 0.0);
        // At the edges, a line retains its full thickness.
        show(plot, QPolygonF{{0.0, 0.0}, {30.0, 0.0}, {31.0, kHeight - 1.0}, {60.0, kHeight - 1.0}});
        QCOMPARE(plot.image().pixel(0, 0), kInk);
        QCOMPARE(plot.image().pixel(60, kHeight - 1), kInk);
    }

    void anOldCurveLeavesNoTrace()
    {
        QRandomGenerator random(1);
        for (const int thickness : {1, 2}) {
            PlotImage plot;
            plot.setGrid(colourfulGrid(), thickness);
            for (int i = 0; i < 50; ++i) {
                const QPolygonF curve = randomCurve(random);
                show(plot, curve);
                PlotImage fresh;
                fresh.setGrid(colourfulGrid(), thickness);
                show(fresh, curve);
                QCOMPARE(plot.image(), fresh.image());
            }
            show(plot, {});
            QCOMPARE(plot.image(), colourfulGrid());
        }
    }

    void tellsWhatHasChanged()
    {
        QRandomGenerator random(2);
        PlotImage plot;
        plot.setGrid(colourfulGrid(), 1);
        QVERIFY(show(plot, {}).isEmpty());
        for (int i = 0; i < 50; ++i) {
            const QImage before = plot.image().copy();
            const QPolygonF curve = i % 5 == 4 ? QPolygonF() : randomCurve(random);
            const QRegion changed = show(plot, curve);
            QVERIFY(QRegion(plot.image().rect()).subtracted(changed).united(changed) == QRegion(plot.image().rect()));
            for (int y = 0; y < kHeight; ++y)
                for (int x = 0; x < kWidth; ++x)
                    if (before.pixel(x, y) != plot.image().pixel(x, y))
                        QVERIFY(changed.contains(QPoint(x, y)));
            QVERIFY(show(plot, curve).isEmpty());
        }
        // A small change is reported as a small region.
        show(plot, QPolygonF{{0.0, 20.0}, {60.0, 20.0}});
        const QRegion changed = show(plot, QPolygonF{{0.0, 20.0}, {40.0, 20.0}, {42.0, 22.0}, {60.0, 20.0}});
        QVERIFY(changed.boundingRect().left() >= 30 && changed.boundingRect().top() >= 19);
        QVERIFY(changed.boundingRect().bottom() <= 24);
    }

    void aGapIsNotBridged()
    {
        const double gap = std::numeric_limits<double>::quiet_NaN();
        PlotImage plot;
        plot.setGrid(blackGrid(), 1);
        show(plot, QPolygonF{{10.0, 5.0}, {20.0, 5.0}, {25.0, gap}, {30.0, 5.0}, {40.0, 5.0}});
        for (int x = 0; x < kWidth; ++x) {
            const bool isOnCurve = (x >= 10 && x <= 20) || (x >= 30 && x <= 40);
            QCOMPARE(plot.image().pixel(x, 5), isOnCurve ? kInk : qRgb(0, 0, 0));
        }
    }

    void theLastCurveLiesOnTop()
    {
        constexpr QRgb below = qRgb(0, 255, 255);
        PlotImage plot;
        plot.setGrid(blackGrid(), 1);
        const QPolygonF flat{{0.0, 20.0}, {60.0, 20.0}};
        const QPolygonF step{{0.0, 0.0}, {29.0, 0.0}, {31.0, 20.0}, {60.0, 20.0}};
        plot.setCurves(std::array{PlotImage::Curve{flat, below}, PlotImage::Curve{step, kInk}});
        QCOMPARE(plot.image().pixel(5, 20), below);
        QCOMPARE(plot.image().pixel(50, 20), kInk);
        plot.setCurves(std::array{PlotImage::Curve{step, kInk}, PlotImage::Curve{flat, below}});
        QCOMPARE(plot.image().pixel(50, 20), below);
    }

    // Curves cross, appear and disappear. The image always matches that of a new plot; at the end, the grid is
    // restored.
    void severalCurvesLeaveNoTrace()
    {
        constexpr std::array inks{qRgb(0, 255, 255), qRgb(255, 0, 255), kInk};
        QRandomGenerator random(3);
        PlotImage plot;
        plot.setGrid(colourfulGrid(), 2);
        std::vector<PlotImage::Curve> last;
        for (int i = 0; i < 300; ++i) {
            std::vector<PlotImage::Curve> curves;
            for (std::size_t number = 0; number < random.bounded(4U); ++number) {
                // Some curves have the same points and colour as in the previous set, others only the same points.
                const bool stays = number < last.size() && random.bounded(2) == 0;
                curves.push_back({stays ? last[number].points : randomCurve(random),
                                  stays && random.bounded(3) > 0 ? last[number].colour
                                                                 : inks[static_cast<std::size_t>(random.bounded(3))]});
            }
            last = curves;
            const QImage before = plot.image().copy();
            const QRegion changed = plot.setCurves(curves);
            PlotImage fresh;
            fresh.setGrid(colourfulGrid(), 2);
            fresh.setCurves(curves);
            QCOMPARE(plot.image(), fresh.image());
            for (int y = 0; y < kHeight; ++y)
                for (int x = 0; x < kWidth; ++x)
                    if (before.pixel(x, y) != plot.image().pixel(x, y))
                        QVERIFY(changed.contains(QPoint(x, y)));
        }
        plot.setCurves({});
        QCOMPARE(plot.image(), colourfulGrid());
    }

    // Changing only the colour is also reported as a change.
    void aChangedColourIsTold()
    {
        PlotImage plot;
        plot.setGrid(blackGrid(), 1);
        const QPolygonF flat{{0.0, 20.0}, {60.0, 20.0}};
        show(plot, flat);
        const QRegion changed = plot.setCurves(std::array{PlotImage::Curve{flat, qRgb(0, 255, 255)}});
        QVERIFY(changed.contains(QPoint(30, 20)));
        QCOMPARE(plot.image().pixel(30, 20), qRgb(0, 255, 255));
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
        plot.setGrid(grid, 1);
        show(plot, peaksAt(50.0, 240.0));
        const QRegion changed = show(plot, peaksAt(52.0, 242.0));
        QVERIFY(changed.contains(QPoint(52, 15)));
        QVERIFY(changed.contains(QPoint(242, 15)));
        // The region includes neither the space between the peaks nor the background beside them.
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
