// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace calvorn {

// The device between the generator and the detector of a simulated board.
enum class DeviceKind {
    Bandpass, // 7.1 MHz, 600 kHz wide, third order Butterworth, 1.5 dB insertion loss
    Lowpass,  // 7 MHz, fifth order Chebyshev, 0.2 dB ripple
    Notch,    // 7 MHz, Q 20
    Crystal,  // series resonance 9.000 MHz, 1.2 kHz wide in 50 ohms, parallel resonance 18 kHz above
    Antenna,  // at a bridge for 50 ohms: a dipole, 60 ohms at its resonance of 7.050 MHz, Q 12
    Through,  // a piece of cable
    Curve,    // as described in a file
};

// Returns the device with this name in the settings file, ignoring case; Bandpass for any other name.
DeviceKind deviceFromName(const QString &name);

// Returns the voltage ratio |H|, 0..1, at this frequency (Hz); |rho| for an antenna, 0 for a curve.
double responseOf(DeviceKind device, double hertz);

class DeviceUnderTest
{
public:
    DeviceUnderTest(DeviceKind kind) // NOLINT(google-explicit-constructor): complete for every kind but a curve
        : m_kind(kind)
    {
    }

    // Reads lines of a frequency in Hz, a comma and a voltage ratio; ignores empty lines and lines that begin with '#'.
    // If the file cannot be read or a line has another form, the device passes nothing.
    static DeviceUnderTest fromFile(const QString &path);

    DeviceKind kind() const { return m_kind; }

    // Returns the voltage ratio at the detector, 0..1. Interpolates between the points of a curve; outside its
    // points nothing passes.
    double responseAt(double hertz) const;

    // Returns the reflection that a bridge measures: that of an antenna, or the signal that any other device does not
    // pass.
    double reflectionAt(double hertz) const;

private:
    DeviceKind m_kind;
    std::vector<std::pair<double, double>> m_curve; // by frequency
};

} // namespace calvorn
