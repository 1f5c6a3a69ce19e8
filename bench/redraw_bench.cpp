// SPDX-License-Identifier: MIT
// Measures a full redraw of the graph: 400 cells are read, a different curve is drawn each time with grid and markers,
// and everything is copied to the device. Baseline: the same cached pixmap and a prepared polyline of 400 points.
// QT_SCALE_FACTOR sets the screen scale (1, 1.5, 2); the benchmark names contain it as a percentage.
#include "display/marker_panel.h"
#include "display/sweep_graph.h"
#include "platform/qt_desktop.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

using namespace calvorn;

namespace {

// Returns a filter's pass band with noise, in dB, formatted like table cells.
QStringList levels(double phase)
{
    QStringList texts;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double distance = (row - 200) / 40.0;
        const double noise = 1.5 * std::abs(std::sin(row * 1.7 + phase));
        texts.append(QString::number(-2.0 - std::min(35.0, distance * distance * 8.0) - noise, 'f', 1));
    }
    return texts;
}

struct Setting
{
    Configuration configuration;
    SweepTable table{configuration};
    Markers lines;
    SweepGraph graph{configuration, table, lines};
    QtDesktop desktop;
    QImage device;
    std::array<QStringList, 2> sweeps{levels(0.0), levels(1.0)};
    std::size_t sweep = 0;

    Setting()
    {
        configuration.scaleType = 1;
        configuration.maxScaleDb = -40;
        nextSweep();
        graph.inizializzaGraph();
        device = QImage((QSizeF(graph.size()) * graph.devicePixelRatioF()).toSize(), QImage::Format_RGB32);
        device.setDevicePixelRatio(graph.devicePixelRatioF());
        graph.drawLine();
    }

    void nextSweep()
    {
        sweep = 1 - sweep;
        for (int row = 1; row <= kSweepPoints; ++row)
            table.setText(row, SweepTable::AmplitudeColumn, sweeps[sweep][row - 1]);
    }

    void showMarkersAndCross()
    {
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::CursorV})
            graph.moveLine(item, 100.0 + 60.0 * static_cast<int>(item));
        for (const GraphItem item : {GraphItem::M3, GraphItem::M4, GraphItem::CursorH})
            graph.moveLine(item, 5000.0 + 3000.0 * static_cast<int>(item));
        graph.markers().setVisible(GraphItem::CursorV, true);
        graph.markers().setVisible(GraphItem::CursorH, true);
    }
};

void redraw(benchmark::State &state)
{
    Setting setting;
    for (auto _ : state) {
        setting.nextSweep();
        setting.graph.drawLine();
        setting.graph.render(&setting.device, {}, {}, QWidget::RenderFlags());
        benchmark::DoNotOptimize(setting.device.constBits());
    }
}

// The worst case: markers across the plot and the floating cross.
void redrawWithMarkersAndCross(benchmark::State &state)
{
    Setting setting;
    setting.showMarkersAndCross();
    for (auto _ : state) {
        setting.nextSweep();
        setting.graph.drawLine();
        setting.graph.render(&setting.device, {}, {}, QWidget::RenderFlags());
        benchmark::DoNotOptimize(setting.device.constBits());
    }
}

// Moves the mouse by one pixel, which updates the read-outs and the cross and repaints the whole graph.
void mouseMove(benchmark::State &state)
{
    Setting setting;
    setting.showMarkersAndCross();
    setting.configuration.cursorMode = 1;
    Messages messages(setting.configuration, setting.desktop);
    Log log(setting.configuration);
    ErrorBoundary boundary(messages, log);
    MarkerPanel markers(setting.configuration, setting.table, setting.lines, setting.graph, setting.desktop, boundary);
    int x = 0;
    for (auto _ : state) {
        x = (x + 1) % setting.graph.width();
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 100), QPointF(x, 100), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&setting.graph, &move);
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
    add("redrawWithMarkersAndCross", redrawWithMarkersAndCross);
    add("mouseMove", mouseMove);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
