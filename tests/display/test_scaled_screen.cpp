// SPDX-License-Identifier: MIT
// The graph on a screen scaled to 150 %: the curve is 1.5 device pixels thick.
#include "display/sweep_graph.h"

#include <QApplication>
#include <QTest>

#include <cmath>

using namespace calvorn;

class TestScaledScreen : public QObject
{
    Q_OBJECT

private slots:
    void theCurveIsAsThickAsTheScaling()
    {
        Configuration configuration;
        configuration.maxScaleVolt = 2.0F;
        SweepTable table(configuration);
        Markers markers;
        SweepGraph graph(configuration, table, markers);
        QCOMPARE(graph.devicePixelRatioF(), 1.5);
        graph.inizializzaGraph();
        graph.resize(402, 402);
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
            graph.markers().setVisible(item, false);
        table.inizializzaGrid();
        for (int row = 1; row <= kSweepPoints; ++row)
            table.setText(row, SweepTable::AmplitudeColumn, QStringLiteral("1.1"));
        graph.drawLine();
        const QImage image = graph.grab().toImage();
        QCOMPARE(image.size(), QSize(603, 603));
        for (int x = 6; x < 597; ++x) {
            double cover = 0.0;
            for (int y = 0; y < image.height(); ++y) {
                const QRgb colour = image.pixel(x, y);
                // No grid colour is both red and green.
                cover += std::min(qRed(colour), qGreen(colour)) / 255.0;
            }
            QVERIFY2(std::abs(cover - 1.5) < 0.1, qPrintable(QStringLiteral("column %1: %2").arg(x).arg(cover)));
        }
        // The grid lines stay sharp: they are one device pixel wide.
        const int x = static_cast<int>(0.5 + 60.0 * 602.0 / 400.0);
        QCOMPARE(image.pixel(x, 71), qRgb(0, 100, 0));
        QCOMPARE(image.pixel(x + 1, 71), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(x - 1, 71), qRgb(0, 0, 0));
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_SCALE_FACTOR", "1.5");
    QApplication application(argc, argv);
    TestScaledScreen test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_scaled_screen.moc"
