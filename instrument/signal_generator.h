// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QObject>

namespace calvorn {

// The generator as a signal source: on at one frequency, or off. A sweep takes it, and leaves it off. The calibration
// of the generator and its limits hold as in a sweep.
class SignalGenerator : public QObject
{
    Q_OBJECT

public:
    SignalGenerator(const Configuration &configuration, Instrument &instrument, QObject *parent = nullptr);

    bool isOn() const { return m_isOn; }
    std::int32_t frequency() const { return m_frequency; } // Hz

    // The frequency in hertz that lies nearest within the limits of the configuration.
    std::int32_t withinLimits(double hertz) const;

    // Takes the frequency, and puts it on the generator where that is on. hertz: within the limits.
    void setFrequency(std::int32_t hertz);

    // Empty, or why it stays off, in one sentence. RuntimeError where the hardware does not answer.
    QString switchOn();
    void switchOff();

    // The generator was put somewhere else; where it is on it comes back.
    void resume();

signals:
    void changed();

private:
    void setOn(bool on);

    const Configuration &m_configuration;
    Instrument &m_instrument;
    std::int32_t m_frequency = 0;
    bool m_isOn = false;
};

} // namespace calvorn
