// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QObject>

#include <functional>

namespace calvorn {

// The generator as a signal source: on at one frequency, or off. Uses the generator's calibration and limits like a
// sweep. When another operation commands the generator, the state becomes Elsewhere: the generator is then wherever
// that operation has left it.
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

    // One sentence about the error since the generator was last switched on; empty if there was none.
    const QString &fault() const { return m_fault; }

    // Returns the frequency in whole hertz, clamped to the configured limits.
    std::int32_t withinLimits(double hertz) const;

    // Stores the frequency, and sets the generator to it if it is on. hertz: within the limits.
    void setFrequency(std::int32_t hertz);

    // If the generator stays off, fault() gives the reason. Throws RuntimeError when the hardware does not answer.
    void switchOn();
    // Does nothing without a driver.
    void switchOff();

    // Restores the frequency of a generator that is on, after it was parked at the start of the sweep.
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
