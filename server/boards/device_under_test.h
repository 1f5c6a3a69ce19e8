// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace calvorn {

// The device connected between a simulated board's generator and detector.
enum class DeviceKind {
    Bandpass, // 7.1 MHz, 600 kHz wide, third-order Butterworth, 1.5 dB insertion loss
    Lowpass,  // 7 MHz, fifth-order Chebyshev, 0.2 dB ripple
    Notch,    // 7 MHz, Q 20
    Crystal,  // series resonance 9.000 MHz, 1.2 kHz wide in 50 ohms, parallel resonance 18 kHz above
    Antenna,  // a dipole on a 50 ohm bridge: 60 ohms at its resonance of 7.050 MHz, Q 12
    Through,  // a piece of cable
    Curve,    // read from a file
};

// Returns the device with this name in the settings file, ignoring case; Bandpass if the name is unknown.
DeviceKind deviceFromName(const QString &name);

// Returns the voltage ratio |H| at this frequency (Hz), 0..1. For an antenna, returns |rho|; for a curve, returns 0.
double responseOf(DeviceKind device, double hertz);

class DeviceUnderTest
{
public:
    DeviceUnderTest(DeviceKind kind) // NOLINT(google-explicit-constructor): complete for every kind but a curve
        : m_kind(kind)
    {
    }

    // Reads lines that contain a frequency in Hz, a comma and a voltage ratio; ignores empty lines and lines that begin
    // with '#'. If the file cannot be read or a line is invalid, the device blocks every signal.
    static DeviceUnderTest fromFile(const QString &path);

    DeviceKind kind() const { return m_kind; }

    // Returns the voltage ratio at the detector, 0..1. Interpolates linearly between the points of a curve and returns
    // 0 outside them.
    double responseAt(double hertz) const;

    // Returns the reflection measured by a bridge: that of an antenna or, for any other device, the signal that does
    // not pass through it.
    double reflectionAt(double hertz) const;

private:
    DeviceKind m_kind;
    std::vector<std::pair<double, double>> m_curve; // sorted by frequency
};

} // namespace calvorn
