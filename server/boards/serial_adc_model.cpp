// SPDX-License-Identifier: MIT
#include "server/boards/serial_adc_model.h"

#include "server/boards/detector_model.h"

#include <utility>

namespace calvorn {

SerialAdcModel::SerialAdcModel(const SerialAdcType &type, double referenceVolts, Input input)
    : m_type(type)
    , m_referenceVolts(referenceVolts)
    , m_input(std::move(input))
{
}

void SerialAdcModel::drive(bool select, bool clock, Time now)
{
    const bool selectBefore = std::exchange(m_select, select);
    const bool clockBefore = std::exchange(m_clock, clock);
    if (selectBefore && !select)
        beginFrame(now);
    if (!select && !selectBefore && clockBefore && !clock)
        fallingClock(now);
}

bool SerialAdcModel::dataOut() const
{
    if (m_select || m_edges >= m_type.bits)
        return false;
    return (m_result >> (m_type.bits - 1 - m_edges) & 1) != 0;
}

void SerialAdcModel::beginFrame(Time now)
{
    m_edges = 0;
    if (!m_converting)
        return;
    const Time age = now - m_hold;
    if (age >= m_type.conversionTime) {
        m_result = m_pending;
        m_converting = false;
        return;
    }
    ++m_earlyFrames;
    if (age < m_type.abortWindow) {
        m_converting = false;
        ++m_aborted;
    }
}

void SerialAdcModel::fallingClock(Time now)
{
    if (++m_edges != m_type.bits)
        return;
    m_pending = convertedCount(m_input(now), m_referenceVolts, m_type.counts());
    m_hold = now;
    m_converting = true;
    ++m_conversions;
}

} // namespace calvorn
