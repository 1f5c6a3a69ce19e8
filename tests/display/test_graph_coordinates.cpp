// SPDX-License-Identifier: MIT
#include "display/plot/graph_coordinates.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace calvorn;

class TestGraphCoordinates : public QObject
{
    Q_OBJECT

private:
    static GraphCoordinates coordinates(int scale, float maxVolt, std::int32_t maxDb)
    {
        Configuration configuration;
        configuration.scaleType = static_cast<std::int16_t>(scale);
        configuration.maxScaleVolt = maxVolt;
        configuration.maxScaleDb = maxDb;
        return GraphCoordinates(configuration);
    }

    static QList<double> horizontal(const GraphCoordinates &graph, QRgb colour)
    {
        QList<double> ys;
        for (const GridLine &line : graph.gridLines()) {
            if (line.y1 == line.y2 && line.colour == colour)
                ys.append(line.y1);
        }
        return ys;
    }

private slots:
    void edgesOfEveryScale_data()
    {
        QTest::addColumn<int>("scale");
        QTest::addColumn<double>("top");
        QTest::addColumn<double>("height");
        QTest::addColumn<double>("pitch"); // for a surface 400 pixels high
        QTest::newRow("linear") << 0 << 1996.0 << -2000.0 << 100.0;
        QTest::newRow("1 V") << 1 << 0.0 << 40000.0 << 100.0;
        QTest::newRow("1 V + 10 dB") << 2 << -10000.0 << 50000.0 << 80.0;
        QTest::newRow("10 V") << 3 << 0.0 << 40000.0 << 100.0;
        QTest::newRow("10 V + 10 dB") << 4 << -10000.0 << 50000.0 << 80.0;
    }
    void edgesOfEveryScale()
    {
        QFETCH(int, scale);
        const GraphCoordinates graph = coordinates(scale, 2.0F, -40);
        QTEST(graph.top(), "top");
        QTEST(graph.height(), "height");
        QTEST(graph.labelPitch(400.0), "pitch");
        // The corners are the centres of the outermost pixels, and the conversion back is exact.
        QCOMPARE(graph.toPixel({0, graph.top()}, {534, 400}), QPointF(0.5, 0.5));
        QCOMPARE(graph.toPixel({400, graph.bottom()}, {534, 400}), QPointF(533.5, 399.5));
        const QPointF there = graph.toPixel({123.0, 4567.0}, {800, 600}, 0.5);
        QVERIFY(std::abs(graph.toUser(there, {800, 600}, 0.5).x() - 123.0) < 1e-9);
        QVERIFY(std::abs(graph.toUser(there, {800, 600}, 0.5).y() - 4567.0) < 1e-6);
    }

    void verticalLines()
    {
        for (int scale = 0; scale < 5; ++scale) {
            const GraphCoordinates graph = coordinates(scale, 1.5F, -60);
            QList<double> major;
            QList<double> centre;
            int minor = 0;
            for (const GridLine &line : graph.gridLines()) {
                if (line.x1 != line.x2)
                    continue;
                QCOMPARE(line.y1, graph.top());
                QCOMPARE(line.y2, graph.bottom());
                if (line.colour == qRgb(0, 200, 0))
                    major.append(line.x1);
                else if (line.colour == qRgb(230, 0, 0))
                    centre.append(line.x1);
                else if (line.colour == qRgb(0, 100, 0))
                    ++minor;
            }
            QCOMPARE(major, (QList<double>{0, 50, 100, 150, 250, 300, 350, 400}));
            QCOMPARE(centre, QList<double>{200});
            QCOMPARE(minor, 41 - 9);
        }
    }

    void linearLines()
    {
        const GraphCoordinates graph = coordinates(0, 2.0F, -40);
        const QList<double> minor = horizontal(graph, qRgb(0, 100, 0));
        QCOMPARE(minor.size(), 20);
        QCOMPARE(minor.first(), 1996.0);
        QCOMPARE(minor.last(), 96.0);
        QCOMPARE(horizontal(graph, qRgb(0, 200, 0)), (QList<double>{1996, 1496, 996, 496}));
        QCOMPARE(horizontal(graph, qRgb(230, 0, 0)), QList<double>{0});
    }

    void logarithmicLines()
    {
        const GraphCoordinates plain = coordinates(1, 2.0F, -40);
        QCOMPARE(horizontal(plain, qRgb(0, 200, 0)), (QList<double>{0, 10000, 20000, 30000, 40000}));
        QCOMPARE(horizontal(plain, qRgb(0, 100, 0)).size(), 26); // every 2 dB from +10 dB to -40 dB
        const GraphCoordinates raised = coordinates(2, 2.0F, -40);
        QCOMPARE(horizontal(raised, qRgb(0, 200, 0)), (QList<double>{0, 10000, 20000, 30000, 40000, 50000}));
        QCOMPARE(horizontal(raised, qRgb(0, 100, 0)).size(), 31);
        // The 0 dB line is red, painted last, and a fifth of the height below the top.
        QCOMPARE(raised.gridLines().back(), (GridLine{0, 0, 400, 0, qRgb(230, 0, 0)}));
        QCOMPARE(raised.toPixel({0, 0}, {534, 401}).y(), 80.5);
    }

    void damagedSettingsStayCheap_data()
    {
        QTest::addColumn<int>("scale");
        QTest::addColumn<float>("volt");
        QTest::addColumn<int>("db");
        const float nan = std::numeric_limits<float>::quiet_NaN();
        const float infinite = std::numeric_limits<float>::infinity();
        for (const float volt : {0.0F, -1.0F, nan, infinite, 3e38F, 1e-38F})
            QTest::addRow("%g V", static_cast<double>(volt)) << 0 << volt << -40;
        for (const int db : {0, 1, 40, -2000000000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            QTest::addRow("%d dB", db) << 1 << 1.0F << db;
            QTest::addRow("%d dB + 10", db) << 4 << 1.0F << db;
        }
        QTest::newRow("no scale") << 99 << 1.0F << -40;
        QTest::newRow("negative scale") << -1 << 1.0F << -40;
    }
    void damagedSettingsStayCheap()
    {
        QFETCH(int, scale);
        QFETCH(float, volt);
        QFETCH(int, db);
        const GraphCoordinates graph = coordinates(scale, volt, db);
        QVERIFY(graph.height() != 0.0);
        QVERIFY(std::isfinite(graph.top()) && std::isfinite(graph.height()));
        QVERIFY(std::isfinite(graph.labelPitch(400)) && graph.labelPitch(400) > 0.0);
        const QPointF zero = graph.toPixel({200, 0}, {534, 400});
        QVERIFY(std::isfinite(zero.y()));
        const std::vector<GridLine> lines = graph.gridLines();
        QVERIFY(lines.size() >= 42); // at least the vertical lines and the zero line
        QVERIFY(lines.size() < 500);
    }
};

QTEST_MAIN(TestGraphCoordinates)
#include "test_graph_coordinates.moc"
