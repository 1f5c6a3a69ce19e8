// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"
#include "platform/profile_file.h"
#include "protocol/setting_key.h"

#include <QStringList>

namespace calvorn {

// The detector law in the settings file. A linear detector needs none of these keys.
//   [Config]   ADC Law    linear, log or table
//   [Detector] Slope      log: mV per dB, 1 to 1000 or -1000 to -1
//              Intercept  log: dBm, -200 to 200
//              Point 1    table: detector volts;dBm at the input; numbered without gaps up to Point 32
inline constexpr const char *kDetectorSection = "Detector";
inline constexpr SettingKey kAdcLaw{kConfigSection, "ADC Law", "linear"};
inline constexpr SettingKey kDetectorSlope{kDetectorSection, "Slope", "25"};
inline constexpr SettingKey kDetectorIntercept{kDetectorSection, "Intercept", "-84"};

// Reads slope, intercept and points regardless of the selected law. Replaces invalid values with defaults and discards
// unusable points. If the selected law is unusable, returns a linear law and appends an error message to `faults`.
DetectorLaw readDetectorLaw(const Profile &profile, QStringList &faults);

// Returns the entries that must be written for the file to describe this law; empty if it already does (a linear law
// needs no key). Values that belong to other laws are written only if they differ, so an invalid table stays in the
// file until a new one replaces it.
QVector<ProfileEntry> detectorLawEntries(const DetectorLaw &law, const Profile &profile);

// Writes the law atomically. Throws RuntimeError if the file cannot be written.
void writeDetectorLaw(const DetectorLaw &law, const QString &settingsFile);

} // namespace calvorn
