// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"
#include "platform/profile_file.h"
#include "protocol/setting_key.h"

#include <QStringList>

namespace calvorn {

// The detector law in the settings file. The file contains none of these keys while the detector is linear.
//   [Config]   ADC Law    linear, log or table
//   [Detector] Slope      log: mV per dB, 1 to 1000 or -1000 to -1
//              Intercept  log: dBm, -200 to 200
//              Point 1    table: detector volts;dBm at the input; numbered without gaps up to Point 32
inline constexpr const char *kDetectorSection = "Detector";
inline constexpr SettingKey kAdcLaw{kConfigSection, "ADC Law", "linear"};
inline constexpr SettingKey kDetectorSlope{kDetectorSection, "Slope", "25"};
inline constexpr SettingKey kDetectorIntercept{kDetectorSection, "Intercept", "-84"};

// Reads slope, intercept and points for any law and replaces unusable values by defaults, unusable points by none. If
// the selected law is unusable, returns a linear law and appends a sentence with the reason to `faults`.
DetectorLaw readDetectorLaw(const Profile &profile, QStringList &faults);

// Returns the entries to write so that the file describes this law; none if it already does, which includes an absent
// key for a linear law. Values that belong to other laws are written only if they differ, so a damaged table stays in
// the file until a new one replaces it.
QVector<ProfileEntry> detectorLawEntries(const DetectorLaw &law, const Profile &profile);

// Writes the law completely or not at all. Throws RuntimeError if the file cannot be written.
void writeDetectorLaw(const DetectorLaw &law, const QString &settingsFile);

} // namespace calvorn
