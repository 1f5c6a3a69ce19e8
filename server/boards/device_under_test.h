// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// What hangs between the generator and the detector of a simulated board.
enum class DeviceKind {
    Bandpass, // 7.1 MHz, 600 kHz wide, third order Butterworth, 1.5 dB insertion loss
    Lowpass,  // 7 MHz, fifth order Chebyshev, 0.2 dB ripple
    Notch,    // 7 MHz, Q 20
    Crystal,  // series resonance 9.000 MHz, 1.2 kHz wide in 50 ohms, parallel resonance 18 kHz above
    Through,  // a piece of cable
};

// By the name in the settings file, in any case; anything else is the bandpass.
DeviceKind deviceFromName(const QString &name);

// Voltage ratio |H|, 0..1, at this frequency (Hz).
double responseOf(DeviceKind device, double hertz);

} // namespace calvorn
