// SPDX-License-Identifier: MIT
#include "analysis/text_plot.h"

#include "core/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>

namespace calvorn {

namespace {

constexpr int kRows = 17;     // rows of the curve
constexpr int kRowPitch = 4;  // rows from one amplitude label to the next
constexpr int kAxisWidth = 9; // an amplitude label, a space and the axis
constexpr int kWidth = kTextPlotColumns - kAxisWidth;

struct Band
{
    double low;
    double high;
};

std::vector<double> amplitudesOf(const SweepTable &table)
{
    std::vector<double> values;
    for (int row = 1; row <= kSweepPoints; ++row)
        values.push_back(table.number(row, SweepTable::AmplitudeColumn));
    return values;
}

// Returns the range of the values, ignoring gaps; nullopt if all are gaps.
std::optional<Band> bandOf(std::span<const double> values)
{
    std::optional<Band> band;
    for (const double value : values)
        if (!std::isnan(value))
            band = band ? Band{std::min(band->low, value), std::max(band->high, value)} : Band{value, value};
    return band;
}

// Returns the range of the values in one character column.
std::optional<Band> bandOf(std::span<const double> values, int column)
{
    const auto count = static_cast<int>(values.size());
    const int first = column * count / kWidth;
    const int last = std::max(first + 1, (column + 1) * count / kWidth);
    return bandOf(values.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first)));
}

QString frequencyLine(const std::array<QString, 3> &frequencies)
{
    const auto &[start, centre, stop] = frequencies;
    QString line(kTextPlotColumns, u' ');
    const auto put = [&line](qsizetype from, const QString &text) {
        line.replace(std::clamp(from, qsizetype{0}, line.size() - text.size()), text.size(), text);
    };
    put(kAxisWidth, start);
    put(kAxisWidth + kWidth / 2 - centre.size() / 2, centre);
    put(kTextPlotColumns - stop.size(), stop);
    return line;
}

} // namespace

QStringList textPlot(const SweepTable &table, bool linear)
{
    const auto frequency = [&table](int row) { return table.text(row, SweepTable::FrequencyColumn); };
    return textPlot({frequency(1), frequency(kSweepPoints / 2), frequency(kSweepPoints)}, amplitudesOf(table), linear);
}

QStringList textPlot(const std::array<QString, 3> &frequencies, const std::vector<double> &amplitudes, bool linear)
{
    const Band all = bandOf(amplitudes).value_or(Band{0.0, 0.0});
    const double bottom = linear ? std::min(0.0, all.low) : all.low;
    // A flat curve would otherwise have a height of zero.
    const double height = std::max(all.high - bottom, linear ? 0.001 : 0.1);
    const auto rowOf = [&](double value) {
        return static_cast<int>(std::lround((bottom + height - value) / height * (kRows - 1)));
    };
    const NumberText numbers;
    QStringList lines;
    for (int row = 0; row < kRows; ++row) {
        const double amplitude = bottom + height * (kRows - 1 - row) / (kRows - 1);
        const QString label =
            row % kRowPitch == 0 ? numbers.masked(amplitude, linear ? kMaskVolt : kMaskDb) : QString();
        QString line = label.rightJustified(kAxisWidth - 2) + QStringLiteral(" |");
        for (int column = 0; column < kWidth; ++column) {
            const std::optional<Band> band = bandOf(amplitudes, column);
            line += band && row >= rowOf(band->high) && row <= rowOf(band->low) ? u'*' : u' ';
        }
        while (line.endsWith(u' '))
            line.chop(1);
        lines.append(line);
    }
    lines.append(QString(kAxisWidth - 1, u' ') + u'+' + QString(kWidth, u'-'));
    lines.append(frequencyLine(frequencies));
    return lines;
}

} // namespace calvorn
