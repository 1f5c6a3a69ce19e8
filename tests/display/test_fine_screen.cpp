// SPDX-License-Identifier: MIT
// The graph on a screen with two device pixels per logical pixel: sharp lines, and a curve two pixels wide.
#include "display/sweep_graph.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace calvorn;

class TestFineScreen : public QObject
{
    Q_OBJECT

private slots:
    void linesAreTwoDevicePixelsWide()
    {
        Configuration configuration;
        configuration.maxScaleVolt = 2.0F;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        QCOMPARE(graph.devicePixelRatioF(), 2.0);
        graph.inizializzaGraph();
        graph.resize(401, 401);
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
            graph.markers().setVisible(item, false);
        table.inizializzaGrid();
        for (int row = 1; row <= kSweepPoints; ++row)
            table.setText(row, SweepTable::AmplitudeColumn, row <= 200 ? QStringLiteral("1.1") : QStringLiteral("0.6"));
        graph.drawLine();
        const QImage image = graph.grab().toImage();
        QCOMPARE(image.size(), QSize(802, 802));
        // The curve covers two device pixels in each column, spread over three if it lies between two rows.
        const auto isCurve = [&image](int x, int y) { return image.pixel(x, y) == qRgb(255, 255, 0); };
        for (int x = 4; x < 798; ++x) {
            double cover = 0.0;
            int rows = 0;
            for (int y = 0; y < image.height(); ++y) {
                const QRgb colour = image.pixel(x, y);
                const bool shines = qRed(colour) > 0 && qGreen(colour) >= qRed(colour);
                cover += shines ? qRed(colour) / 255.0 : 0.0;
                rows += shines ? 1 : 0;
            }
            const bool step = x > 395 && x < 410;
            QVERIFY2(step ? cover >= 1.9 : std::abs(cover - 2.0) < 0.1 && rows <= 3,
                     qPrintable(QStringLiteral("column %1: %2 in %3 rows").arg(x).arg(cover).arg(rows)));
        }
        // Between points 200 and 201 the curve falls without a gap.
        for (int y = 361; y < 559; ++y) {
            int across = 0;
            double cover = 0.0;
            for (int x = 395; x < 410; ++x) {
                across += isCurve(x, y) ? 1 : 0;
                // No grid colour is both red and green.
                cover += std::min(qRed(image.pixel(x, y)), qGreen(image.pixel(x, y))) / 255.0;
            }
            QVERIFY2(across >= 1 && cover >= 1.9, qPrintable(QStringLiteral("row %1: %2").arg(y).arg(cover)));
        }
        // The grid line at x = 60 covers two whole device pixels.
        const int x = 60 * 801 / 400;
        QCOMPARE(image.pixel(x, 71), qRgb(0, 100, 0));
        QCOMPARE(image.pixel(x + 1, 71), qRgb(0, 100, 0));
        QCOMPARE(image.pixel(x + 2, 71), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(x - 1, 71), qRgb(0, 0, 0));
    }

    void aMarkerOnTheLowerEdgeIsNotCutOff()
    {
        Configuration configuration;
        configuration.maxScaleVolt = 2.0F;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        graph.inizializzaGraph();
        graph.resize(401, 401);
        graph.markers().setVisible(GraphItem::M4, false); // M4 is at 0 V, just above M3
        graph.moveLine(GraphItem::M3, -4.0);
        const QImage image = graph.grab().toImage();
        for (const int y : {800, 801})
            QCOMPARE(image.pixel(610, y), graph.line(GraphItem::M3).colour);
    }

    // When parts of the graph are uncovered, each is copied separately from its own position.
    void piecesAreCopiedFromTheirPlaces()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        Configuration configuration;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        graph.inizializzaGraph();
        graph.resize(401, 401);
        const QImage whole = graph.grab().toImage();
        QPixmap pieces(whole.size());
        pieces.setDevicePixelRatio(2.0);
        pieces.fill(Qt::white);
        QRegion region(10, 10, 100, 100);
        region += QRect(200, 250, 100, 100);
        graph.render(&pieces, region.boundingRect().topLeft(), region, QWidget::RenderFlags());
        const QImage image = pieces.toImage();
        for (const QRect &piece : region) {
            const QRect pixels(piece.topLeft() * 2, piece.size() * 2);
            QCOMPARE(image.copy(pixels), whole.copy(pixels));
        }
    }

    void thePointerIsACrossInAFrame()
    {
        Configuration configuration;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        graph.inizializzaGraph();
        graph.resize(401, 401);
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
            graph.markers().setVisible(item, false);
        graph.show();
        graph.activateWindow();
        graph.setFocus();
        QTRY_VERIFY(graph.hasFocus());
        const QImage image = graph.grab().toImage().convertToFormat(QImage::Format_RGB32);
        QRect cross;
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) == qRgb(255, 255, 255)) {
                    cross |= QRect(x, y, 1, 1);
                    ++pixels;
                }
            }
        }
        // The cross extends six logical pixels from its centre, and its lines are one device pixel wide.
        QVERIFY2(std::abs(cross.width() - 25) <= 1, qPrintable(QString::number(cross.width())));
        QVERIFY2(std::abs(cross.height() - 25) <= 1, qPrintable(QString::number(cross.height())));
        QCOMPARE(pixels, cross.width() + cross.height() - 1);
        QVERIFY(std::abs(cross.center().x() - 401) <= 1 && std::abs(cross.center().y() - 401) <= 1);
        // The focus frame covers all four sides.
        const QRgb frame = graph.palette().color(QPalette::Highlight).rgb();
        for (const QPoint side : {QPoint(2, 310), QPoint(799, 310), QPoint(310, 2), QPoint(310, 799)})
            QCOMPARE(image.pixel(side), frame);
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication application(argc, argv);
    TestFineScreen test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_fine_screen.moc"
