// SPDX-License-Identifier: MIT
// Measures the cost of the Measure panel: a full redraw with four stored traces, an average, limits and the panel open,
// and the computation of one sweep's results. The baseline for the redraw is that of redraw_bench: a cached pixmap and
// a prepared polyline of 400 points.
#include "data/amplitude_writer.h"
#include "measure/measure_dock.h"
#include "platform/qt_desktop.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

using namespace calvorn;

namespace {

// Returns a filter's pass band with noise, in counts.
QVector<int> counts(double phase)
{
    QVector<int> made;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double distance = (row - 200) / 40.0;
        made.append(static_cast<int>(900.0 / (1.0 + distance * distance) + 10.0 * std::sin(row * 1.7 + phase)));
    }
    return made;
}

struct Setting
{
    Configuration configuration;
    SweepTable table{configuration};
    Markers lines;
    QtDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    GraphPanel panel{configuration, table, lines, desktop, boundary};
    MarkerPanel markers{configuration, table, lines, panel.graph(), desktop, boundary};
    MeasureDock dock{configuration, table, panel, markers, desktop, boundary};
    QImage device;
    std::array<QVector<int>, 2> sweeps{counts(0.0), counts(1.0)};
    std::size_t sweep = 0;

    Setting()
    {
        configuration.scaleType = 1;
        configuration.maxScaleDb = -40;
        configuration.adcStep = 0.001F;
        configuration.startFreq = 1000000;
        configuration.stopFreq = 5000000;
        configuration.stepFreq = 10000;
        table.inizializzaGrid();
        panel.graph().inizializzaGraph();
        device =
            QImage((QSizeF(panel.graph().size()) * panel.graph().devicePixelRatioF()).toSize(), QImage::Format_RGB32);
        device.setDevicePixelRatio(panel.graph().devicePixelRatioF());
        writeNextSweep();
        draw();
    }

    void writeNextSweep()
    {
        sweep = 1 - sweep;
        AmplitudeWriter writer(configuration, table);
        for (int row = 1; row <= kSweepPoints; ++row)
            writer.storeCount(row, sweeps[sweep][row - 1]);
    }

    // Announces the sweep in the table and draws it immediately instead of after the redraw timer's delay.
    void draw()
    {
        table.sweepWritten(SweepOrigin::Measured, detectorOf(configuration));
        emit panel.graph().redraws().fired();
        panel.graph().render(&device, {}, {}, QWidget::RenderFlags());
        benchmark::DoNotOptimize(device.constBits());
    }

    void switchEverythingOn()
    {
        dock.show();
        Measurement &measurement = dock.measurement();
        for (int slot = 0; slot < TraceSet::kStored; ++slot)
            measurement.traces().store(slot);
        measurement.traces().switchOn(TraceSet::Source::Average, true);
        measurement.tracesEdited();
        LimitLines limits;
        for (const double level : {-3.0, -10.0})
            limits.add({level == -3.0 ? 1.5e6 : 4.5e6, level, level - 20.0});
        measurement.setLimits(limits);
        measurement.setLimitsOn(true);
    }
};

// Returns the elapsed time in seconds.
template <typename Work>
double timeOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void redraw(benchmark::State &state)
{
    Setting setting;
    for (auto _ : state) {
        setting.writeNextSweep();
        state.SetIterationTime(timeOf([&] { setting.draw(); }));
    }
}

void redrawWithEverything(benchmark::State &state)
{
    Setting setting;
    setting.switchEverythingOn();
    for (auto _ : state) {
        setting.writeNextSweep();
        state.SetIterationTime(timeOf([&] { setting.draw(); }));
    }
}

void floorOfRedraw(benchmark::State &state)
{
    Setting setting;
    QPixmap background(setting.device.size());
    background.fill(Qt::black);
    QPolygonF polyline;
    for (const QPointF &point : setting.panel.graph().curve())
        polyline.append(setting.panel.graph().coordinates().toPixel(point, background.size()));
    QImage device(background.size(), QImage::Format_RGB32);
    for (auto _ : state) {
        setting.writeNextSweep();
        state.SetIterationTime(timeOf([&] {
            QPainter painter(&device);
            painter.drawPixmap(0, 0, background);
            painter.setPen(QPen(QColor::fromRgb(kCurveColour), 0));
            painter.drawPolyline(polyline);
            painter.end();
            benchmark::DoNotOptimize(device.constBits());
        }));
    }
}

// The argument is the index of the ResultKind.
void resultsOfASweep(benchmark::State &state)
{
    Setting setting;
    const auto kind = static_cast<ResultKind>(state.range(0));
    const Trace trace = traceOf(setting.table.sweep(), setting.configuration.scaleType);
    const Response response = kind == ResultKind::Crystal || kind == ResultKind::Match ? relativeResponse(trace, trace)
                                                                                       : responseIn(trace, 1.0);
    for (auto _ : state)
        benchmark::DoNotOptimize(resultsOf(kind, response));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const auto add = [](const char *name, void (*run)(benchmark::State &)) {
        return benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMicrosecond);
    };
    add("floorOfMeasuredRedraw", floorOfRedraw)->UseManualTime();
    add("measuredRedraw", redraw)->UseManualTime();
    add("measuredRedrawWithEverything", redrawWithEverything)->UseManualTime();
    add("resultsOfASweep", resultsOfASweep)->DenseRange(0, 3);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
