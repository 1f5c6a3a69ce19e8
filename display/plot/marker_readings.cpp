// SPDX-License-Identifier: MIT
#include "display/plot/marker_readings.h"

#include "core/checked_arithmetic.h"
#include "core/common_functions.h"
#include "core/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calvorn {

namespace {

double bounded(double amplitude)
{
    return std::clamp(amplitude, -kLargestAmplitude, kLargestAmplitude);
}

} // namespace

int rowOfFrequency(const SweepTable &table, std::int32_t frequency)
{
    int row = 1;
    while (row < kSweepPoints && table.frequency(row) < frequency)
        ++row;
    return row;
}

std::optional<int> rowOfEntry(const SweepTable &table, const QString &text)
{
    const NumberText numbers;
    if (!numbers.isNumeric(text) || std::abs(numbers.toDouble(text)) > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return rowOfFrequency(table, numbers.toInt32(text));
}

std::optional<double> amplitudeOfEntry(const QString &text)
{
    const std::optional<double> entered = enteredReal(text);
    return entered ? std::optional(bounded(*entered)) : std::nullopt;
}

QString markerText(bool linear, double amplitude)
{
    return NumberText().masked(amplitude, linear ? kMaskVolt : kMaskDb);
}

QString frequencyDifference(const SweepTable &table, const MarkerSet &markers)
{
    const std::int32_t difference =
        checkedSubtract(table.frequency(markers.row(GraphItem::M2)), table.frequency(markers.row(GraphItem::M1)));
    return NumberText().masked(checkedMagnitude(difference), kMaskHertzDifference);
}

double markerDifference(bool linear, double m3, double m4)
{
    if (linear)
        return std::abs(m4 - m3);
    const bool sameSide = (m3 > 0.0 && m4 > 0.0) || (m3 < 0.0 && m4 < 0.0);
    return sameSide ? m4 - m3 : std::abs(m3) + std::abs(m4);
}

AmplitudeTexts amplitudeTexts(bool linear, double m3, double m4)
{
    return {markerText(linear, bounded(m3)), markerText(linear, bounded(m4)),
            markerText(linear, markerDifference(linear, bounded(m3), bounded(m4)))};
}

double shownAmplitude(bool linear, double amplitude)
{
    return NumberText().toDouble(markerText(linear, amplitude));
}

MarkerTexts markerTexts(const SweepTable &table, const MarkerSet &markers, bool linear)
{
    const auto cell = [&](GraphItem item, SweepTable::Column column) { return table.text(markers.row(item), column); };
    const auto shown = [&](GraphItem item) { return shownAmplitude(linear, markers[item].position); };
    const AmplitudeTexts amplitudes = amplitudeTexts(linear, shown(GraphItem::M3), shown(GraphItem::M4));
    return {cell(GraphItem::M1, SweepTable::FrequencyColumn),
            cell(GraphItem::M1, SweepTable::AmplitudeColumn),
            cell(GraphItem::M2, SweepTable::FrequencyColumn),
            cell(GraphItem::M2, SweepTable::AmplitudeColumn),
            frequencyDifference(table, markers),
            amplitudes.m3y,
            amplitudes.m4y,
            amplitudes.m4m3};
}

MarkerSet markersOf(const WindowSettings &settings, const SweepTable &table)
{
    MarkerSet markers;
    markers[GraphItem::M1].position = rowOfEntry(table, settings.marker1).value_or(1);
    markers[GraphItem::M2].position = rowOfEntry(table, settings.marker2).value_or(1);
    markers[GraphItem::M3].position = amplitudeOfEntry(settings.marker3).value_or(0.0);
    markers[GraphItem::M4].position = amplitudeOfEntry(settings.marker4).value_or(0.0);
    return markers;
}

} // namespace calvorn
