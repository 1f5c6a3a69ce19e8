// SPDX-License-Identifier: MIT
// A full redraw of the graph (400 cells read, grid, curve, markers) beside the bare floor: the same kept pixmap and
// a ready polyline of 400 points. QT_SCALE_FACTOR gives the screen scale (1, 1.5, 2); the names show it in percent.
#include "display/sweep_graph.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace calvorn;

namespace {

// A table with a filter's pass band and noise, in dB.
void fillTable(SweepTable &table)
{
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double distance = (row - 200) / 40.0;
        const double level = -2.0 - std::min(35.0, distance * distance * 8.0) - 1.5 * std::abs(std::sin(row * 1.7));
        table.setText(row, SweepTable::AmplitudeColumn, QString::number(level, 'f', 1));
    }
}

struct Setting
{
    Configuration configuration;
    SweepTable table{configuration};
    SweepGraph graph{configuration, table};
    QImage device;

    Setting()
    {
        configuration.scaleType = 1;
        configuration.maxScaleDb = -40;
        fillTable(table);
        graph.inizializzaGraph();
        device = QImage((QSizeF(graph.size()) * graph.devicePixelRatioF()).toSize(), QImage::Format_RGB32);
        device.setDevicePixelRatio(graph.devicePixelRatioF());
        graph.drawLine();
    }
};

void redraw(benchmark::State &state)
{
    Setting setting;
    for (auto _ : state) {
        setting.graph.drawLine();
        setting.graph.render(&setting.device, {}, {}, QWidget::RenderFlags());
        benchmark::DoNotOptimize(setting.device.constBits());
    }
}

void floorOfRedraw(benchmark::State &state)
{
    Setting setting;
    QPixmap background(setting.device.size());
    background.fill(Qt::black);
    QPolygonF polyline;
    for (const QPointF &point : setting.graph.curve())
        polyline.append(setting.graph.coordinates().toPixel(point, background.size()));
    QImage device(background.size(), QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter painter(&device);
        painter.drawPixmap(0, 0, background);
        painter.setPen(QPen(QColor::fromRgb(kCurveColour), 0));
        painter.drawPolyline(polyline);
        painter.end();
        benchmark::DoNotOptimize(device.constBits());
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QByteArray percent = QByteArray::number(std::lround(application.devicePixelRatio() * 100.0));
    const auto add = [&percent](const QByteArray &name, void (*run)(benchmark::State &)) {
        benchmark::RegisterBenchmark((name + '/' + percent).constData(), run)->Unit(benchmark::kMicrosecond);
    };
    add("floorOfRedraw", floorOfRedraw);
    add("redraw", redraw);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
