// SPDX-License-Identifier: MIT
#include "display/plot/plot_model.h"

#include <cmath>

namespace calvorn {

namespace {

// Derives the axis from the first and the last row. The step is 0 if these frequencies are not numbers.
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

std::vector<LegendEntry> PlotModel::legend() const
{
    std::vector<LegendEntry> entries;
    if (!hasLegend || (traces.empty() && moving.empty() && limits.empty() && relation.isEmpty()))
        return entries;
    if (live)
        entries.push_back({live->name, live->style});
    for (const std::vector<PlotTrace> *list : {&moving, &traces})
        for (const PlotTrace &trace : *list)
            entries.push_back({trace.name, trace.style});
    for (const LimitLine &limit : limits)
        if (!limit.name.isEmpty())
            entries.push_back({limit.name, limit.style});
    return entries;
}

void PlotModel::showNoSweep(const SweepTable &table)
{
    axis = axisOf(table);
    live.reset();
}

} // namespace calvorn
