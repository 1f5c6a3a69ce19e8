// SPDX-License-Identifier: MIT
#include "instrument/sample_conversion.h"

#include "core/checked_arithmetic.h"
#include "core/detector_calibration.h"
#include "protocol/vna_instrument.h"

namespace calvorn {

namespace {

int rising(int received, bool inverted)
{
    return inverted ? checkedSubtract(kVnaFullScale, received) : received;
}

} // namespace

SampleConversion::SampleConversion(Configuration &configuration, SweepTable &table, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_table(table)
{
}

void SampleConversion::datiDDS(const QVector<int> &vettore)
{
    const bool inverted = m_isInverted();
    AmplitudeWriter amplitudes(m_configuration, m_table, &m_known);
    for (int row = 1; row <= kSweepPoints; ++row) {
        if (row > vettore.size())
            throw RuntimeError(RuntimeError::Kind::SubscriptOutOfRange, tr("sample %1 of a sweep").arg(row));
        const int received = vettore[row - 1];
        const int raw = rising(received, inverted);
        amplitudes.storeCount(row, raw);
        if (m_configuration.logDebug)
            emit sampleReceived(row, received);
    }
    m_table.sweepWritten(SweepOrigin::Measured, detectorOf(m_configuration));
    emit vectorStored();
}

int SampleConversion::risingCount(int received) const
{
    return rising(received, m_isInverted());
}

} // namespace calvorn
