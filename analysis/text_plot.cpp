// SPDX-License-Identifier: MIT
#include "analysis/text_plot.h"

#include "core/number_text.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace calvorn {

namespace {

constexpr int kRows = 17;     // of the curve
constexpr int kRowPitch = 4;  // rows between two amplitudes
constexpr int kAxisWidth = 9; // an amplitude, a blank and the axis
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

// What the curve covers in one column of letters.
Band bandOf(const std::vector<double> &values, int column)
{
    const int first = column * kSweepPoints / kWidth;
    const int last = std::max(first + 1, (column + 1) * kSweepPoints / kWidth);
    const auto [low, high] = std::minmax_element(values.begin() + first, values.begin() + last);
    return {*low, *high};
}

QString frequencyLine(const SweepTable &table)
{
    const QString &start = table.text(1, SweepTable::FrequencyColumn);
    const QString &centre = table.text(kSweepPoints / 2, SweepTable::FrequencyColumn);
    const QString &stop = table.text(kSweepPoints, SweepTable::FrequencyColumn);
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
    const std::vector<double> values = amplitudesOf(table);
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    const double bottom = linear ? std::min(0.0, *least) : *least;
    // A flat curve needs a height all the same.
    const double height = std::max(*most - bottom, linear ? 0.001 : 0.1);
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
            const Band band = bandOf(values, column);
            line += row >= rowOf(band.high) && row <= rowOf(band.low) ? u'*' : u' ';
        }
        while (line.endsWith(u' '))
            line.chop(1);
        lines.append(line);
    }
    lines.append(QString(kAxisWidth - 1, u' ') + u'+' + QString(kWidth, u'-'));
    lines.append(frequencyLine(table));
    return lines;
}

} // namespace calvorn
