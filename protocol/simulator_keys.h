// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/setting_key.h"

#include <array>

namespace calvorn {

// Settings for the simulated boards. The server reads them; the program writes the section to a new settings file.
inline constexpr const char *kSimulatorSection = "Simulator";

// The value of "LPT" in [Parallel Port] that selects the simulated board; for the serial boards, see
// kSimulatedComPort.
inline constexpr int kSimulatedLptAddress = 0;

inline constexpr SettingKey kSimulatedDevice{kSimulatorSection, "Device", "bandpass"};
// The file for the "curve" device.
inline constexpr SettingKey kSimulatedCurve{kSimulatorSection, "Curve", ""};
inline constexpr SettingKey kSimulatorPace{kSimulatorSection, "Pace", "real"};
inline constexpr SettingKey kSimulatorSeed{kSimulatorSection, "Seed", "1"};
inline constexpr SettingKey kSimulatorFault{kSimulatorSection, "Fault", "none"};
inline constexpr SettingKey kSimulatedDetector{kSimulatorSection, "Detector", "linear"};
// The detector input level with a lossless device.
inline constexpr SettingKey kSimulatedLevel{kSimulatorSection, "Level", "10"}; // dBm
// If empty, these three default to the settings in [Config].
inline constexpr SettingKey kSimulatedChip{kSimulatorSection, "Chip", ""};
inline constexpr SettingKey kSimulatedClock{kSimulatorSection, "Clock", ""}; // Hz
inline constexpr SettingKey kSimulatedAdc{kSimulatorSection, "ADC", ""};

// Values for "Detector"; the first is the default.
inline constexpr std::array kSimulatedDetectors{"linear", "log", "diode"};

// Values for "Device"; the first is the default.
inline constexpr std::array kSimulatedDevices{"bandpass", "lowpass", "notch", "crystal", "antenna", "through", "curve"};

inline constexpr std::array kSimulatorKeys{kSimulatedDevice,   kSimulatedCurve, kSimulatorPace,  kSimulatorSeed,
                                           kSimulatorFault,    kSimulatedChip,  kSimulatedClock, kSimulatedAdc,
                                           kSimulatedDetector, kSimulatedLevel};

} // namespace calvorn
