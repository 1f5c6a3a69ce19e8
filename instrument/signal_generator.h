// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QObject>

#include <functional>

namespace calvorn {

// The generator as a signal source: on at one frequency, or off. The calibration of the generator and its limits hold
// as in a sweep. Whatever else commands the generator takes it: it is then neither on nor off, and stands where the
// other put it.
class SignalGenerator : public QObject
{
    Q_OBJECT

public:
    enum class State { On, Off, Elsewhere };

    static constexpr std::int32_t kUsualFrequency = 7'000'000; // Hz, until another one is chosen

    SignalGenerator(const Configuration &configuration, Instrument &instrument, QObject *parent = nullptr);

    State state() const { return m_state; }
    bool isOn() const { return m_state == State::On; }
    std::int32_t frequency() const { return m_frequency; } // Hz

    // What went wrong since it was switched on last, in one sentence, or nothing.
    const QString &fault() const { return m_fault; }

    // The frequency in hertz that lies nearest within the limits of the configuration.
    std::int32_t withinLimits(double hertz) const;

    // Takes the frequency, and puts it on the generator where that is on. hertz: within the limits.
    void setFrequency(std::int32_t hertz);

    // Where it stays off, fault() says why. RuntimeError where the hardware does not answer.
    void switchOn();
    // Nothing without a driver.
    void switchOff();

    // The generator was parked on the start of the sweep; where it is on it comes back.
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
