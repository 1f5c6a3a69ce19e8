// SPDX-License-Identifier: MIT
#include "data/sweep_csv.h"

#include "core/number_text.h"

#include <array>
#include <charconv>

namespace calvorn {

namespace {

void appendNumber(QByteArray &csv, double value)
{
    std::array<char, 32> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value == 0.0 ? 0.0 : value,
                                       std::chars_format::general, 15);
    csv.append(buffer.data(), written.ptr - buffer.data());
}

} // namespace

QByteArray sweepAsCsv(const SweepTable &table)
{
    const NumberText numbers;
    QByteArray csv("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
    for (int row = 1; row <= kSweepPoints; ++row) {
        appendNumber(csv, row);
        csv.append(',');
        appendNumber(csv, numbers.toDouble(table.text(row, SweepTable::FrequencyColumn)));
        csv.append(',');
        appendNumber(csv, numbers.toDouble(table.text(row, SweepTable::SampleColumn)));
        csv.append(',');
        appendNumber(csv, numbers.toDouble(table.text(row, SweepTable::AmplitudeColumn)) * 1000.0);
        csv.append("\r\n");
    }
    return csv;
}

} // namespace calvorn
