// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"
#include "display/plot/graph_coordinates.h"
#include "display/plot/markers.h"

#include <QRgb>
#include <QString>
#include <Qt>

#include <optional>
#include <vector>

namespace calvorn {

// Frequencies of equally spaced samples.
struct PlotAxis
{
    double start = 0.0; // Hz, frequency of the first sample
    double step = 0.0;  // Hz, between samples; negative for a falling sweep

    // Returns the frequency in Hz at an x in the graph's user units.
    double frequencyAt(double x) const { return start + (x - 1.0) * step; }

    bool operator==(const PlotAxis &) const = default;
};

// How a line is drawn. On paper, lines are distinguished by their style.
struct TraceStyle
{
    QRgb colour = kCurveColour;
    Qt::PenStyle line = Qt::SolidLine;

    bool operator==(const TraceStyle &) const = default;
};

// A curve: an amplitude at each frequency of its own axis.
struct PlotTrace
{
    QString name;
    TraceStyle style;
    PlotAxis axis;
    std::vector<double> amplitudes; // volts or dB, in the scale's unit; NaN in a gap
};

// A line's entry in the legend.
struct LegendEntry
{
    QString name;
    TraceStyle style;

    bool operator==(const LegendEntry &) const = default;
};

// A line through points at arbitrary frequencies, such as a limit.
struct LimitLine
{
    struct Point
    {
        double frequency = 0.0; // Hz
        double amplitude = 0.0; // volts or dB
    };

    QString name;
    TraceStyle style;
    std::vector<Point> points;
};

// The contents of a plot, as a value. The screen and all pictures paint a PlotModel.
struct PlotModel
{
    GraphCoordinates scale;
    PlotAxis axis;                 // the plot's axis: the frequencies of table rows 1, 2, ...
    std::optional<PlotTrace> live; // the last sweep, if there is one; sample i is row i + 1 of the plot
    std::vector<PlotTrace> traces; // drawn below the live curve
    std::vector<PlotTrace> moving; // drawn between traces and the live curve; they change with every sweep
    std::vector<LimitLine> limits;
    MarkerSet markers;
    // Describes the reference of the amplitudes, such as "relative to the reference"; empty for measured volts or dB.
    QString relation;
    bool hasLegend = true; // shown only if there is more than the live sweep

    // Sets the live curve and the axis from the table. An amplitude that is not a number becomes 0.
    void showSweep(const SweepTable &table);
    // Sets only the axis from the table and removes the live curve.
    void showNoSweep(const SweepTable &table);

    // Returns the named lines; empty if the legend is off or only the live sweep is shown, without a reference.
    std::vector<LegendEntry> legend() const;

    // Returns the x of a frequency in the graph's user units. The axis must have a step.
    double xOf(double frequency) const { return 1.0 + (frequency - axis.start) / axis.step; }
};

} // namespace calvorn
