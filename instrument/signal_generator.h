// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QObject>

#include <functional>

namespace calvorn {

// The generator as a signal source: on at a single frequency, or off. Uses the same calibration and limits as a sweep.
// When another operation takes over the generator, the state becomes Elsewhere, because the output then depends on
// that operation.
class SignalGenerator : public QObject
{
    Q_OBJECT

public:
    enum class State { On, Off, Elsewhere };

    static constexpr std::int32_t kUsualFrequency = 7'000'000; // Hz, until another frequency is chosen

    SignalGenerator(const Configuration &configuration, Instrument &instrument, QObject *parent = nullptr);

    State state() const { return m_state; }
    bool isOn() const { return m_state == State::On; }
    std::int32_t frequency() const { return m_frequency; } // Hz

    // The last error message since the generator was switched on; empty if no error has occurred.
    const QString &fault() const { return m_fault; }

    // Returns the frequency in whole hertz, clamped to the configured limits.
    std::int32_t withinLimits(double hertz) const;

    // Stores the frequency and, if the generator is on, outputs it. hertz: within the limits.
    void setFrequency(std::int32_t hertz);

    // If the generator stays off, fault() returns the reason. Throws RuntimeError if the hardware does not answer.
    void switchOn();
    // Does nothing without a driver.
    void switchOff();

    // Restores the frequency of a switched-on generator after it was parked at the start frequency.
    void resume();

signals:
    void changed();

private:
    void follow(AcquisitionDriver *driver);
    void generate();
    void command(State wanted, const std::function<bool()> &tell);
    void failed(const AcquisitionDriver &driver, std::int16_t code, const QString &text);
    void become(State state, const QString &fault = {});

    const Configuration &m_configuration;
    Instrument &m_instrument;
    std::int32_t m_frequency = kUsualFrequency;
    State m_state = State::Elsewhere;
    QString m_fault;
};

} // namespace calvorn
