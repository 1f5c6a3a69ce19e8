// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// COM100 is not a real port; it selects a simulated board.
inline constexpr int kSimulatedComPort = 100;

// Returns the device file for COM<number>, which the key "COM<number>" in [Ports] of the settings file can set. By
// default, COM1..4 are /dev/ttyS0..3, COM5..8 are /dev/ttyUSB0..3 and COM9..12 are /dev/ttyACM0..3. Empty for other
// numbers and for kSimulatedComPort.
QString serialDeviceOf(int number, const QString &settingsPath);

// Returns whether the device file exists, without opening it. Always true for kSimulatedComPort.
bool comPortExists(int number, const QString &settingsPath);

} // namespace calvorn
