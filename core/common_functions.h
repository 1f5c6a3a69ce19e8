// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "protocol/setting_key.h"

#include <QString>

#include <optional>

namespace calvorn {

class Profile;

// The dB value for zero volts, which is the minimum on the logarithmic scales.
inline constexpr double kFloorDb = -100.0;

// Converts a converter count to detector volts: count x adcStep + adcOffset, rounded to 3 decimals, as a float.
float countToVolts(const Configuration &configuration, double count);

// Converts a count to volts RMS at the detector's input with the effective law. The same as countToVolts() for a linear
// law.
float countToInputVolts(const Configuration &configuration, double count);

// Converts volts to the unit of the current scale. For a logarithmic scale, returns dB with 2 decimals, at least
// kFloorDb, and sets dbReference to 10 (scales 3 and 4) or 1 (all others). For the linear scale, returns the volts
// unchanged.
double voltsToDb(Configuration &configuration, double volts);

// Converts a value on the current scale to volts with 3 decimals; returns 0 if the current scale is unknown. Throws
// RuntimeError(Overflow) if the volts do not fit in a double, that is, above 6165 dB relative to 1 V.
double dbToVolts(const Configuration &configuration, double value);

// Like dbToVolts(), but returns the largest double instead of throwing; for levels entered by the user.
double dbToVoltsBounded(const Configuration &configuration, double value);

// Returns the value of a key. If the key is missing or empty, immediately writes `fallback` to the file and returns it;
// an existing value is never overwritten.
QString readSetting(const QString &section, const QString &key, const QString &path, const QString &fallback);

QString readSetting(const SettingKey &key, const QString &path);

// Looks in `profile`, which was read earlier; reads the file again only if the value is missing there.
QString readSetting(const SettingKey &key, const Profile &profile, const QString &path);

// Failed writes are not reported.
void writeSetting(const SettingKey &key, const QString &value, const QString &path);
void writeSetting(const QString &section, const QString &key, const QString &value, const QString &path);

// See NumberText::normaliseDecimal; uses the current locale.
QString normaliseDecimal(const QString &text);

// Returns a number entered by the user, with either decimal separator, or nullopt if the text is not a number.
std::optional<double> enteredReal(const QString &text);

} // namespace calvorn
