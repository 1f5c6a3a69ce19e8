// SPDX-License-Identifier: MIT
#include "data/amplitude_column.h"

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

QString amplitudeTextOf(Configuration &configuration, const NumberText &numbers, double count)
{
    QString text;
    assignAmplitude(text, configuration, numbers, static_cast<double>(countToVolts(configuration, count)));
    return text;
}

AmplitudeColumn::AmplitudeColumn(Configuration &configuration, SweepTable &table)
    : m_configuration(configuration)
    , m_table(table)
{
}

void AmplitudeColumn::storeCount(int row, int count)
{
    NumberText::assignInteger(m_table.cell(row, SweepTable::SampleColumn), count);
    writeAmplitude(row, count);
}

float AmplitudeColumn::convertRow(int row)
{
    return writeAmplitude(row, m_numbers.toDouble(m_table.text(row, SweepTable::SampleColumn)));
}

float AmplitudeColumn::writeAmplitude(int row, double count)
{
    const float volts = countToVolts(m_configuration, count);
    assignAmplitude(m_table.cell(row, SweepTable::AmplitudeColumn), m_configuration, m_numbers,
                    static_cast<double>(volts));
    return volts;
}

void AmplitudeColumn::convertAllRows()
{
    for (int row = 1; row <= kSweepPoints; ++row)
        convertRow(row);
    m_table.cellsWritten();
}

} // namespace calvorn
