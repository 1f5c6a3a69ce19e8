// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/setting_key.h"

#include <array>

namespace calvorn {

// The simulated boards. The server reads these keys, the program brings the section into a new file.
inline constexpr const char *kSimulatorSection = "Simulator";

// The base address in [Parallel Port] "LPT" at which the simulated board answers; kSimulatedComPort is that of the
// serial boards.
inline constexpr int kSimulatedLptAddress = 0;

inline constexpr SettingKey kSimulatedDevice{kSimulatorSection, "Device", "bandpass"};
// The file of the device "curve".
inline constexpr SettingKey kSimulatedCurve{kSimulatorSection, "Curve", ""};
inline constexpr SettingKey kSimulatorPace{kSimulatorSection, "Pace", "real"};
inline constexpr SettingKey kSimulatorSeed{kSimulatorSection, "Seed", "1"};
inline constexpr SettingKey kSimulatorFault{kSimulatorSection, "Fault", "none"};
inline constexpr SettingKey kSimulatedDetector{kSimulatorSection, "Detector", "linear"};
// At the detector when nothing is lost on the way.
inline constexpr SettingKey kSimulatedLevel{kSimulatorSection, "Level", "10"}; // dBm
// Without a text of their own these three follow [Config].
inline constexpr SettingKey kSimulatedChip{kSimulatorSection, "Chip", ""};
inline constexpr SettingKey kSimulatedClock{kSimulatorSection, "Clock", ""}; // Hz
inline constexpr SettingKey kSimulatedAdc{kSimulatorSection, "ADC", ""};

// What "Detector" can be, the default first.
inline constexpr std::array kSimulatedDetectors{"linear", "log", "diode"};

// What "Device" can be, the default first.
inline constexpr std::array kSimulatedDevices{"bandpass", "lowpass", "notch", "crystal", "antenna", "through", "curve"};

inline constexpr std::array kSimulatorKeys{kSimulatedDevice,   kSimulatedCurve, kSimulatorPace,  kSimulatorSeed,
                                           kSimulatorFault,    kSimulatedChip,  kSimulatedClock, kSimulatedAdc,
                                           kSimulatedDetector, kSimulatedLevel};

} // namespace calvorn
