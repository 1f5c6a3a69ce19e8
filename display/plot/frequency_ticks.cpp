// SPDX-License-Identifier: MIT
#include "display/plot/frequency_ticks.h"

#include "core/number_text.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr int kMajorLines = 8; // intervals between the left and right edges of the plot
constexpr double kMajorDistance = GraphCoordinates::kWidth / kMajorLines;
constexpr double kFineness = 50.0; // the decimals resolve the major line spacing divided by this

struct Unit
{
    double hertz;
    int mostDecimals; // number of decimals that resolves 1 Hz
    QString (*text)(const QString &number);
};

class TickTexts
{
    Q_DECLARE_TR_FUNCTIONS(FrequencyTicks)

public:
    static QString megahertz(const QString &number) { return tr("%1 MHz").arg(number); }
    static QString kilohertz(const QString &number) { return tr("%1 kHz").arg(number); }
    static QString hertz(const QString &number) { return tr("%1 Hz").arg(number); }
};

Unit unitFor(double hertz)
{
    if (hertz >= 1e6)
        return {1e6, 6, TickTexts::megahertz};
    if (hertz >= 1e3)
        return {1e3, 3, TickTexts::kilohertz};
    return {1.0, 0, TickTexts::hertz};
}

bool fit(const std::vector<FrequencyTick> &ticks, const TickStrip &strip)
{
    std::vector<TickInterval> intervals = strip.taken;
    for (const FrequencyTick &tick : ticks) {
        const double half = strip.widthOf(tick.text) / 2.0;
        const double middle = strip.placeOf(tick.x);
        intervals.push_back({middle - half, middle + half});
    }
    std::ranges::sort(intervals, {}, &TickInterval::left);
    for (std::size_t i = 1; i < intervals.size(); ++i)
        if (intervals[i].left - intervals[i - 1].right < strip.gap)
            return false;
    return true;
}

} // namespace

std::vector<FrequencyTick> frequencyTicks(const PlotAxis &axis, int every)
{
    if (axis.step == 0.0)
        return {};
    const double outermost = std::max(std::abs(axis.frequencyAt(kMajorDistance)),
                                      std::abs(axis.frequencyAt(GraphCoordinates::kWidth - kMajorDistance)));
    const Unit unit = unitFor(outermost);
    const double finest = std::abs(kMajorDistance * axis.step) / unit.hertz / kFineness;
    DisplayMask mask("#0");
    mask.decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(finest))), 0, unit.mostDecimals);
    const NumberText numbers;
    std::vector<FrequencyTick> ticks;
    for (int line = every; line < kMajorLines; line += every) {
        const double x = line * kMajorDistance;
        if (line != kMajorLines / 2)
            ticks.push_back({x, unit.text(numbers.masked(axis.frequencyAt(x) / unit.hertz, mask))});
    }
    return ticks;
}

std::vector<FrequencyTick> fittingTicks(const PlotAxis &axis, const TickStrip &strip)
{
    for (int every = 1; every < kMajorLines / 2; every *= 2) {
        std::vector<FrequencyTick> ticks = frequencyTicks(axis, every);
        if (fit(ticks, strip))
            return ticks;
    }
    return {};
}

} // namespace calvorn
