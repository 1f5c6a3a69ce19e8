// SPDX-License-Identifier: MIT
#include "data/amplitude_column.h"

#include "core/common_functions.h"
#include "core/scale_type.h"

namespace calvorn {

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
    QString &amplitude = m_table.cell(row, SweepTable::AmplitudeColumn);
    if (isLinearScale(m_configuration.scaleType))
        m_numbers.assignMasked(amplitude, static_cast<double>(volts), kMaskVolt);
    else
        m_numbers.assignMasked(amplitude, voltsToDb(m_configuration, static_cast<double>(volts)), kMaskDb);
    return volts;
}

void AmplitudeColumn::convertAllRows()
{
    for (int row = 1; row <= kSweepPoints; ++row)
        convertRow(row);
    m_table.cellsWritten();
}

} // namespace calvorn
