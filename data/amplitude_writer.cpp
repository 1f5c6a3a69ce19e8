// SPDX-License-Identifier: MIT
#include "data/amplitude_writer.h"

#include "core/common_functions.h"
#include "core/scale_type.h"

namespace calvorn {

namespace {

void assignAmplitude(QString &text, Configuration &configuration, const NumberText &numbers, double volts)
{
    if (isLinearScale(configuration.scaleType))
        numbers.assignMasked(text, volts, kMaskVolt);
    else
        numbers.assignMasked(text, voltsToDb(configuration, volts), kMaskDb);
}

} // namespace

bool amplitudesFollowFromCounts(const SweepTable &table, Configuration configuration)
{
    const NumberText numbers;
    QString shown;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const auto index = static_cast<std::size_t>(row - 1);
        const double count = table.numbers(SweepTable::SampleColumn)[index];
        const double amplitude = table.numbers(SweepTable::AmplitudeColumn)[index];
        if (!Sweep::isNumber(count) || !Sweep::isNumber(amplitude))
            return false;
        assignAmplitude(shown, configuration, numbers, static_cast<double>(countToVolts(configuration, count)));
        if (numbers.toDouble(shown) != amplitude)
            return false;
    }
    return true;
}

AmplitudeWriter::AmplitudeWriter(Configuration &configuration, SweepTable &table)
    : m_configuration(configuration)
    , m_table(table)
{
}

void AmplitudeWriter::storeCount(int row, int count)
{
    NumberText::assignInteger(m_table.cell(row, SweepTable::SampleColumn), count);
    writeAmplitude(row, count);
}

float AmplitudeWriter::convertRow(int row)
{
    return writeAmplitude(row, m_table.number(row, SweepTable::SampleColumn));
}

float AmplitudeWriter::writeAmplitude(int row, double count)
{
    const float volts = countToVolts(m_configuration, count);
    assignAmplitude(m_table.cell(row, SweepTable::AmplitudeColumn), m_configuration, m_numbers,
                    static_cast<double>(volts));
    return volts;
}

void AmplitudeWriter::convertAllRows()
{
    for (int row = 1; row <= kSweepPoints; ++row)
        convertRow(row);
}

} // namespace calvorn
