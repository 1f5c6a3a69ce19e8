// SPDX-License-Identifier: MIT
#include "instrument/signal_generator.h"

#include "core/checked_arithmetic.h"
#include "core/runtime_error.h"

#include <algorithm>

namespace calvorn {

SignalGenerator::SignalGenerator(const Configuration &configuration, Instrument &instrument, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_instrument(instrument)
{
    connect(&instrument, &Instrument::sweepStarts, this, [this] { become(State::Elsewhere); });
    connect(&instrument, &Instrument::driverMade, this, [this] { follow(m_instrument.driver()); });
    follow(instrument.driver());
}

void SignalGenerator::follow(AcquisitionDriver *driver)
{
    if (!driver)
        return;
    connect(driver, &AcquisitionDriver::generatorTaken, this, [this] {
        if (m_state != State::Elsewhere)
            become(State::Elsewhere);
    });
    connect(driver, &AcquisitionDriver::aErrore, this,
            [this, driver](std::int16_t code, const QString &text) { failed(*driver, code, text); });
    become(State::Elsewhere);
}

// The hardware may report an error some time after receiving the frequency.
void SignalGenerator::failed(const AcquisitionDriver &driver, std::int16_t code, const QString &text)
{
    using Reaction = AcquisitionDriver::ErrorReaction;
    const Reaction reaction = driver.reactionTo(code);
    const bool isSilent = reaction == Reaction::Ignore || reaction == Reaction::CountSilently;
    if (isOn() && !isSilent)
        become(State::Elsewhere, text.section(u'\r', 0, 0));
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

void SignalGenerator::switchOn()
{
    if (m_instrument.isSweeping()) {
        become(m_state, tr("A sweep is running: stop it first."));
    } else if (!m_instrument.requiredDriver().isConfigured()) {
        become(m_state, tr("The hardware is not connected."));
    } else {
        // The default frequency may be outside the limits.
        m_frequency = withinLimits(m_frequency);
        generate();
    }
}

void SignalGenerator::switchOff()
{
    AcquisitionDriver *driver = m_instrument.driver();
    if (!driver)
        return;
    command(State::Off, [driver] {
        driver->silence();
        return true;
    });
}

void SignalGenerator::resume()
{
    if (isOn() && !m_instrument.isSweeping())
        generate();
}

void SignalGenerator::generate()
{
    command(State::On, [this] { return m_instrument.requiredDriver().generate(m_frequency); });
}

void SignalGenerator::command(State wanted, const std::function<bool()> &tell)
{
    try {
        if (tell())
            become(wanted);
        else
            become(State::Elsewhere, tr("The board did not accept the frequency."));
    } catch (const RuntimeError &) {
        become(State::Elsewhere);
        throw;
    }
}

void SignalGenerator::become(State state, const QString &fault)
{
    if (m_state == state && m_fault == fault)
        return;
    m_state = state;
    m_fault = fault;
    emit changed();
}

} // namespace calvorn
