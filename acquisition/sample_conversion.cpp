// SPDX-License-Identifier: MIT
#include "acquisition/sample_conversion.h"

#include "core/checked_arithmetic.h"
#include "data/amplitude_column.h"

namespace calvorn {

namespace {

// The device-under-test mode of the MiniVNA delivers its 10-bit counts upside down.
constexpr int kAdcFullScale = 1024;
constexpr std::int16_t kVnaModeDut = 3;

} // namespace

SampleConversion::SampleConversion(Configuration &configuration, const WindowSettings &window, SweepTable &table,
                                   QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_window(window)
    , m_table(table)
{
}

void SampleConversion::datiDDS(const QVector<int> &vettore)
{
    const bool inverted = m_configuration.interfaceType == kInterfaceVna && m_window.vnaMode == kVnaModeDut;
    AmplitudeColumn amplitudes(m_configuration, m_table);
    for (int row = 1; row <= kSweepPoints; ++row) {
        if (row > vettore.size())
            throw RuntimeError(RuntimeError::Kind::SubscriptOutOfRange, tr("sample %1 of a sweep").arg(row));
        const int received = vettore[row - 1];
        const int raw = inverted ? checkedSubtract(kAdcFullScale, received) : received;
        amplitudes.storeCount(row, raw);
        if (m_configuration.logDebug)
            emit sampleReceived(row, received);
    }
    m_table.cellsWritten();
    emit vectorStored();
}

} // namespace calvorn
