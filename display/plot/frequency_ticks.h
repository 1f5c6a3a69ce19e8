// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/plot_model.h"

#include <QString>

#include <functional>
#include <vector>

namespace calvorn {

// The label of a major vertical grid line: its frequency, displayed below the plot.
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
    std::function<double(const QString &)> widthOf; // width of a string
    std::function<double(double)> placeOf;          // position of an x in user units
    std::vector<TickInterval> taken;                // occupied by start, centre and stop
    double gap = 0.0;                               // minimum distance between two labels
};

// Returns the labels of every nth major line, except the centre and the outermost lines, where start, centre and stop
// are shown. The decimals resolve a fiftieth of the major line spacing, but not less than 1 Hz. Empty for an axis
// without a step.
std::vector<FrequencyTick> frequencyTicks(const PlotAxis &axis, int every);

// Returns labels for every line if they all fit, otherwise for every second line if these fit, otherwise no labels.
std::vector<FrequencyTick> fittingTicks(const PlotAxis &axis, const TickStrip &strip);

} // namespace calvorn
