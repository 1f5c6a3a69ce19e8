// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/plot_model.h"

#include <QString>

#include <functional>
#include <vector>

namespace calvorn {

// The frequency of a major vertical line of the grid, below the plot.
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

// What the strip is like. All lengths in the painter's units.
struct TickStrip
{
    std::function<double(const QString &)> widthOf; // of a text
    std::function<double(double)> placeOf;          // of an x in user units
    std::vector<TickInterval> taken;                // by the frequencies of start, centre and stop
    double gap = 0.0;                               // between two texts, at least
};

// The frequencies of every nth major line to either side of the centre. The outermost lines and the centre are left
// out: start, centre and stop are shown there. With as many decimals as tell a fiftieth of the distance between two
// major lines. Empty for an axis without a step.
std::vector<FrequencyTick> frequencyTicks(const PlotAxis &axis, int every);

// Those of every line, or else of every second one, for which there is room. Otherwise none.
std::vector<FrequencyTick> fittingTicks(const PlotAxis &axis, const TickStrip &strip);

} // namespace calvorn
