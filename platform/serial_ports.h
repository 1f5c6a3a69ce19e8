// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// COM100 is not a real port; it selects a simulated board.
inline constexpr int kSimulatedComPort = 100;

// Returns the device file for COM<number>: the value of the "COM<number>" key in [Ports] of the settings file or, by
// default, /dev/ttyS0..3 for COM1..4, /dev/ttyUSB0..3 for COM5..8 and /dev/ttyACM0..3 for COM9..12. Returns an empty
// string for other numbers without a key, and always for kSimulatedComPort.
QString serialDeviceOf(int number, const QString &settingsPath);

// Returns whether the device file exists, without opening it. Always true for kSimulatedComPort.
bool comPortExists(int number, const QString &settingsPath);

} // namespace calvorn
