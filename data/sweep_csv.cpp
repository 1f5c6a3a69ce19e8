// SPDX-License-Identifier: MIT
#include "data/sweep_csv.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "data/csv_fields.h"

#include <QCoreApplication>

#include <array>
#include <charconv>

namespace calvorn {

namespace {

void appendNumber(QByteArray &csv, double value)
{
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value == 0.0 ? 0.0 : value,
                                       std::chars_format::general, 15);
    csv.append(buffer.data(), written.ptr - buffer.data());
}

} // namespace

QByteArray sweepAsCsv(const SweepTable &table)
{
    QByteArray csv("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
    for (int row = 1; row <= kSweepPoints; ++row) {
        appendNumber(csv, row);
        csv.append(',');
        appendNumber(csv, table.number(row, SweepTable::FrequencyColumn));
        csv.append(',');
        appendNumber(csv, table.number(row, SweepTable::SampleColumn));
        csv.append(',');
        appendNumber(csv, table.number(row, SweepTable::AmplitudeColumn) * 1000.0);
        csv.append("\r\n");
    }
    return csv;
}

void readSweepCsv(QIODevice &device, SweepTable &table, int *line)
{
    CsvFields fields(device);
    const auto noteLine = [&] {
        if (line)
            *line = fields.line();
    };
    noteLine();
    for (int heading = 0; heading < 4; ++heading)
        fields.next();
    const NumberText numbers;
    std::int16_t row = 1;
    int lines = 0;
    table.forgetAxis();
    while (row <= kSweepPoints) {
        noteLine();
        if (++lines > kMostSweepLines)
            throw RuntimeError(RuntimeError::Kind::File, QCoreApplication::translate("SweepCsv", "too many lines"));
        const QString number = fields.next();
        const QString frequency = fields.next();
        const QString count = fields.next();
        const QString amplitude = fields.next();
        row = numbers.toInt16(number);
        table.setText(row, SweepTable::FrequencyColumn, numbers.masked(numbers.toDouble(frequency), kMaskHertz));
        table.setText(row, SweepTable::SampleColumn, numbers.fromDouble(numbers.toDouble(count)));
        table.setText(row, SweepTable::AmplitudeColumn,
                      numbers.masked(numbers.toDouble(amplitude) / 1000.0, kMaskVolt));
        row = checkedAdd(row, std::int16_t{1});
    }
}

} // namespace calvorn
