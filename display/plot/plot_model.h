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

// Frequencies of samples that lie at equal distances.
struct PlotAxis
{
    double start = 0.0; // Hz, of the first sample
    double step = 0.0;  // Hz, from sample to sample; negative where the sweep falls

    bool operator==(const PlotAxis &) const = default;
};

// How a line is drawn. The line style tells lines apart on paper.
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
    std::vector<double> amplitudes; // volts or dB, as the scale has it; not a number where the curve has a gap
};

// What a legend says of a line.
struct LegendEntry
{
    QString name;
    TraceStyle style;

    bool operator==(const LegendEntry &) const = default;
};

// A line through points of any frequency, such as a limit.
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

// All that a plot shows, as a value: the screen and every picture paint one of these.
struct PlotModel
{
    GraphCoordinates scale;
    PlotAxis axis;                 // of the plot: of the rows 1, 2, ... of the sweep table
    std::optional<PlotTrace> live; // the last sweep; nothing while there is none. Sample i is row i + 1 of the plot.
    std::vector<PlotTrace> traces; // below the live one
    std::vector<PlotTrace> moving; // between the two: traces that change with every sweep
    std::vector<LimitLine> limits;
    MarkerSet markers;
    // What the amplitudes are relative to, in words: "relative to Cable". Empty where they are volts or dB as measured.
    QString relation;
    bool hasLegend = true; // where more than the live sweep is shown

    // Takes live curve and axis from the table; an amplitude that is no number counts as 0.
    void showSweep(const SweepTable &table);
    // Takes the axis alone: there is no curve.
    void showNoSweep(const SweepTable &table);

    // The lines by name; empty while the live sweep is the only one, or without a legend.
    std::vector<LegendEntry> legend() const;

    // The x of a frequency, in user units of the graph. The axis must have a step.
    double xOf(double frequency) const { return 1.0 + (frequency - axis.start) / axis.step; }
};

} // namespace calvorn
