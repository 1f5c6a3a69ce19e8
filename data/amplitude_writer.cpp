// SPDX-License-Identifier: MIT
#include "data/amplitude_writer.h"

#include "core/common_functions.h"
#include "core/detector_calibration.h"
#include "core/scale_type.h"
#include "protocol/devices.h"

namespace calvorn {

namespace {

constexpr int kConverterCounts = kHighestCount10Bit + 1; // of the converter with the highest resolution

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
        assignAmplitude(shown, configuration, numbers, static_cast<double>(countToInputVolts(configuration, count)));
        if (numbers.toDouble(shown) != amplitude)
            return false;
    }
    return true;
}

void rewriteAmplitudes(Configuration &configuration, SweepTable &table)
{
    const NumberText numbers;
    const DetectorCalibration detector = detectorOf(configuration);
    for (int row = 1; row <= kSweepPoints; ++row)
        assignAmplitude(table.cell(row, SweepTable::AmplitudeColumn), configuration, numbers,
                        detector.volts(table.number(row, SweepTable::SampleColumn)));
    table.amplitudesRewritten(detector);
}

void KnownAmplitudes::follow(const Configuration &configuration, const NumberText &numbers)
{
    const bool isSameDetector =
        m_step == configuration.adcStep && m_offset == configuration.adcOffset && m_law == lawInForce(configuration);
    if (!m_cells.empty() && isSameDetector && m_scale == configuration.scaleType &&
        m_decimal == numbers.decimalSeparator())
        return;
    m_cells.assign(kConverterCounts, Cells());
    m_step = configuration.adcStep;
    m_offset = configuration.adcOffset;
    m_law = lawInForce(configuration);
    m_scale = configuration.scaleType;
    m_decimal = numbers.decimalSeparator();
}

KnownAmplitudes::Cells *KnownAmplitudes::of(int count)
{
    return count >= 0 && count < kConverterCounts ? &m_cells[static_cast<std::size_t>(count)] : nullptr;
}

AmplitudeWriter::AmplitudeWriter(Configuration &configuration, SweepTable &table, KnownAmplitudes *known)
    : m_configuration(configuration)
    , m_table(table)
    , m_known(known)
{
    if (!m_known)
        return;
    m_known->follow(configuration, m_numbers);
    voltsToDb(configuration, 1.0); // sets dbReference, because storing a cached cell does not
}

void AmplitudeWriter::storeCount(int row, int count)
{
    QString &countCell = m_table.cell(row, SweepTable::SampleColumn);
    KnownAmplitudes::Cells *known = m_known ? m_known->of(count) : nullptr;
    if (known && !known->count.isEmpty()) {
        countCell = known->count;
        m_table.cell(row, SweepTable::AmplitudeColumn) = known->amplitude;
        return;
    }
    NumberText::assignInteger(countCell, count);
    writeAmplitude(row, count);
    if (known)
        *known = {countCell, m_table.cell(row, SweepTable::AmplitudeColumn)};
}

float AmplitudeWriter::convertRow(int row)
{
    return writeAmplitude(row, m_table.number(row, SweepTable::SampleColumn));
}

float AmplitudeWriter::writeAmplitude(int row, double count)
{
    const float volts = countToInputVolts(m_configuration, count);
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
