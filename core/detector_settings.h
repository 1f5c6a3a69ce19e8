// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"
#include "platform/profile_file.h"
#include "protocol/setting_key.h"

#include <QStringList>

namespace calvorn {

// The law of the detector in the settings file. Nothing of it stands there as long as the detector is linear.
//   [Config]   ADC Law    linear, log, table
//   [Detector] Slope      mV per dB, of log, 1 to 1000 or -1000 to -1
//              Intercept  dBm, of log, -200 to 200
//              Point 1    volts of the detector;dBm at its input, of table, without a gap, up to Point 32
inline constexpr const char *kDetectorSection = "Detector";
inline constexpr SettingKey kAdcLaw{kConfigSection, "ADC Law", "linear"};
inline constexpr SettingKey kDetectorSlope{kDetectorSection, "Slope", "25"};
inline constexpr SettingKey kDetectorIntercept{kDetectorSection, "Intercept", "-84"};

// Reads slope, intercept and points whatever the law is; defaults and no points in place of those that cannot be used.
// Where the law that is chosen cannot be used, it is linear, and a sentence that says why is added.
DetectorLaw readDetectorLaw(const Profile &profile, QStringList &faults);

// What has to be written so that the file says this law; nothing where it says it already, also by its silence. What
// another law needs is written only where it differs: a damaged table stays until a new one takes its place.
QVector<ProfileEntry> detectorLawEntries(const DetectorLaw &law, const Profile &profile);

// Writes it, whole or not at all; RuntimeError where the file cannot be written.
void writeDetectorLaw(const DetectorLaw &law, const QString &settingsFile);

} // namespace calvorn
