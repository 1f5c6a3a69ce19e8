// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/plot_model.h"

#include <QString>

#include <functional>
#include <vector>

namespace calvorn {

// The label of a major vertical grid line: its frequency, shown below the plot.
struct FrequencyTick
{
    double x = 0.0; // user units of the graph
    QString text;   // "7.15 MHz"

    bool operator==(const FrequencyTick &) const = default;
};

// A part of the strip below the plot, in the painter's units.
struct TickInterval
{
    double left = 0.0;
    double right = 0.0;
};

// The layout of the strip below the plot. All lengths are in the painter's units.
struct TickStrip
{
    std::function<double(const QString &)> widthOf; // width of a text
    std::function<double(double)> placeOf;          // position of an x in user units
    std::vector<TickInterval> taken;                // occupied by start, centre and stop
    double gap = 0.0;                               // smallest distance between two texts
};

// Returns the frequencies of every nth major line on both sides of the centre, without the outermost lines and the
// centre, where start, centre and stop are shown. The decimals resolve a fiftieth of the distance between two major
// lines, but at most 1 Hz. Empty for an axis without a step.
std::vector<FrequencyTick> frequencyTicks(const PlotAxis &axis, int every);

// Returns the labels of every line if they all fit, else of every second line if those fit, else none.
std::vector<FrequencyTick> fittingTicks(const PlotAxis &axis, const TickStrip &strip);

} // namespace calvorn
