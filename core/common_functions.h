// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "protocol/setting_key.h"

#include <QString>

#include <optional>

namespace calvorn {

class Profile;

// The dB value of zero volts, the lowest on the logarithmic scales.
inline constexpr double kFloorDb = -100.0;

// Converts a converter count to detector volts: count x adcStep + adcOffset, rounded to 3 decimals, as a float.
float countToVolts(const Configuration &configuration, double count);

// Converts a count to volts RMS at the detector's input by the law in force; a linear law returns countToVolts().
float countToInputVolts(const Configuration &configuration, double count);

// Converts volts to the units of the current scale. A logarithmic scale returns dB with 2 decimals, at least
// kFloorDb, and sets dbReference to 10 (scales 3 and 4) or 1 (any other). The linear scale returns the volts
// unchanged.
double voltsToDb(Configuration &configuration, double volts);

// Converts a value of the current scale to volts with 3 decimals; returns 0 if the current scale is unknown. Throws
// RuntimeError(Overflow) if the volts do not fit into a double, which happens above 6165 dB relative to 1 V.
double dbToVolts(const Configuration &configuration, double value);

// Like dbToVolts(), for a level that the user typed: returns the largest double instead of throwing.
double dbToVoltsBounded(const Configuration &configuration, double value);

// Returns the value of a key. If the key is missing or empty, writes `fallback` to the file at once and returns it;
// an existing value is never rewritten.
QString readSetting(const QString &section, const QString &key, const QString &path, const QString &fallback);

QString readSetting(const SettingKey &key, const QString &path);

// Takes the value from settings that were read before; reads the file again only if the value is missing there.
QString readSetting(const SettingKey &key, const Profile &profile, const QString &path);

// Failed writes are not reported.
void writeSetting(const SettingKey &key, const QString &value, const QString &path);
void writeSetting(const QString &section, const QString &key, const QString &value, const QString &path);

// See NumberText::normaliseDecimal; uses the current locale.
QString normaliseDecimal(const QString &text);

// Returns the number typed into a text box, with either decimal separator; nullopt if the text is not a number.
std::optional<double> enteredReal(const QString &text);

} // namespace calvorn
