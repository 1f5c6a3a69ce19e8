// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// COM100 is no port on the machine: a simulated board answers there.
inline constexpr int kSimulatedComPort = 100;

// The device file behind COM<number>. The key "COM<number>" of [Ports] in the settings file names it; without one
// COM1..4 are /dev/ttyS0..3, COM5..8 /dev/ttyUSB0..3 and COM9..12 /dev/ttyACM0..3. Empty for any other number, and
// for kSimulatedComPort.
QString serialDeviceOf(int number, const QString &settingsPath);

// Whether the device file is there; it is not opened. Always true for kSimulatedComPort.
bool comPortExists(int number, const QString &settingsPath);

} // namespace calvorn
