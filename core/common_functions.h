// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "protocol/setting_key.h"

#include <QString>

#include <optional>

namespace calvorn {

class Profile;

// The lowest value of the logarithmic scales, in dB: that of zero volts.
inline constexpr double kFloorDb = -100.0;

// Detector volts of a converter count: count x adcStep + adcOffset, rounded to 3 decimals, kept as a single.
float countToVolts(const Configuration &configuration, double count);

// Volts RMS at the input of the detector, by its law; those of countToVolts() where the law is linear.
float countToInputVolts(const Configuration &configuration, double count);

// Volts into the units of the current scale. On a logarithmic scale the result is in dB with 2 decimals, at least
// kFloorDb, and dbReference becomes 10 (scales 3, 4) or 1 (any other); the linear scale gives the volts back.
double voltsToDb(Configuration &configuration, double volts);

// A value of the current scale into volts with 3 decimals; 0 for a code that is not a scale. RuntimeError(Overflow)
// where the volts do not fit into a double, which is above 6165 dB of 1 V.
double dbToVolts(const Configuration &configuration, double value);

// The same for a level from a box, which may be absurd: where the volts do not fit, the largest double.
double dbToVoltsBounded(const Configuration &configuration, double value);

// The value of a key, or `fallback`, which is then written into the file at once. Keys that are there are never
// rewritten.
QString readSetting(const QString &section, const QString &key, const QString &path, const QString &fallback);

QString readSetting(const SettingKey &key, const QString &path);

// The same from the settings as they were read a moment ago; only what is missing there reads the file again.
QString readSetting(const SettingKey &key, const Profile &profile, const QString &path);

// A failed write is not reported.
void writeSetting(const SettingKey &key, const QString &value, const QString &path);
void writeSetting(const QString &section, const QString &key, const QString &value, const QString &path);

// See NumberText::normaliseDecimal; by the current locale.
QString normaliseDecimal(const QString &text);

// The number that a text box for real numbers holds, typed with either decimal separator; nothing when it is none.
std::optional<double> enteredReal(const QString &text);

} // namespace calvorn
