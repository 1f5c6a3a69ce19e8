// SPDX-License-Identifier: MIT
#include "instrument/signal_generator.h"

#include "core/checked_arithmetic.h"

#include <algorithm>

namespace calvorn {

SignalGenerator::SignalGenerator(const Configuration &configuration, Instrument &instrument, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_instrument(instrument)
{
    connect(&instrument, &Instrument::sweepStarts, this, [this] { setOn(false); });
}

std::int32_t SignalGenerator::withinLimits(double hertz) const
{
    const double lowest = m_configuration.ddsMinFreq;
    const double highest = std::max<double>(lowest, m_configuration.ddsMaxFreq);
    return roundToInteger<std::int32_t>(std::clamp(hertz, lowest, highest));
}

void SignalGenerator::setFrequency(std::int32_t hertz)
{
    if (hertz == m_frequency)
        return;
    m_frequency = hertz;
    resume();
    emit changed();
}

QString SignalGenerator::switchOn()
{
    if (m_instrument.isSweeping())
        return tr("A sweep is running: stop it first.");
    m_instrument.requiredDriver().generate(m_frequency);
    setOn(true);
    return {};
}

void SignalGenerator::switchOff()
{
    if (!m_isOn)
        return;
    setOn(false);
    m_instrument.requiredDriver().silence();
}

void SignalGenerator::resume()
{
    if (m_isOn && !m_instrument.isSweeping())
        m_instrument.requiredDriver().generate(m_frequency);
}

void SignalGenerator::setOn(bool on)
{
    if (m_isOn == on)
        return;
    m_isOn = on;
    emit changed();
}

} // namespace calvorn
