// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace calvorn {

// What hangs between the generator and the detector of a simulated board.
enum class DeviceKind {
    Bandpass, // 7.1 MHz, 600 kHz wide, third order Butterworth, 1.5 dB insertion loss
    Lowpass,  // 7 MHz, fifth order Chebyshev, 0.2 dB ripple
    Notch,    // 7 MHz, Q 20
    Crystal,  // series resonance 9.000 MHz, 1.2 kHz wide in 50 ohms, parallel resonance 18 kHz above
    Antenna,  // at a bridge for 50 ohms: a dipole, 60 ohms at its resonance of 7.050 MHz, Q 12
    Through,  // a piece of cable
    Curve,    // as a file says
};

// By the name in the settings file, in any case; anything else is the bandpass.
DeviceKind deviceFromName(const QString &name);

// Voltage ratio |H|, 0..1, at this frequency (Hz); of an antenna |rho|, of a curve nothing.
double responseOf(DeviceKind device, double hertz);

class DeviceUnderTest
{
public:
    DeviceUnderTest(DeviceKind kind) // NOLINT(google-explicit-constructor): every kind but a curve is all of it
        : m_kind(kind)
    {
    }

    // Lines of a frequency in Hz, a comma and a voltage ratio; empty lines and those that begin with '#' do not count.
    // Nothing passes when the file cannot be read or a line is not of this form.
    static DeviceUnderTest fromFile(const QString &path);

    DeviceKind kind() const { return m_kind; }

    // As the detector sees it: the voltage ratio, 0..1. Between the points of a curve it is interpolated, and outside
    // them nothing passes.
    double responseAt(double hertz) const;

    // Through a bridge: what an antenna sends back, and of everything else what it does not pass.
    double reflectionAt(double hertz) const;

private:
    DeviceKind m_kind;
    std::vector<std::pair<double, double>> m_curve; // by frequency
};

} // namespace calvorn
