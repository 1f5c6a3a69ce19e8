// SPDX-License-Identifier: MIT
#include "display/plot/plot_model.h"

#include <cmath>

namespace calvorn {

namespace {

// From the first and the last row. Without a step where they are no numbers.
PlotAxis axisOf(const SweepTable &table)
{
    const Sweep::Column &frequencies = table.numbers(SweepTable::FrequencyColumn);
    const double step = (frequencies.back() - frequencies.front()) / (kSweepPoints - 1);
    return std::isfinite(step) ? PlotAxis{frequencies.front(), step} : PlotAxis{};
}

} // namespace

void PlotModel::showSweep(const SweepTable &table)
{
    if (!live)
        live.emplace();
    axis = axisOf(table);
    live->axis = axis;
    const Sweep::Column &cells = table.numbers(SweepTable::AmplitudeColumn);
    live->amplitudes.assign(cells.begin(), cells.end());
    for (double &amplitude : live->amplitudes)
        if (!Sweep::isNumber(amplitude))
            amplitude = 0.0;
}

void PlotModel::showNoSweep(const SweepTable &table)
{
    axis = axisOf(table);
    live.reset();
}

} // namespace calvorn
