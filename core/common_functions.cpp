// SPDX-License-Identifier: MIT
#include "core/common_functions.h"

#include "core/checked_arithmetic.h"
#include "core/detector_calibration.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "platform/profile_file.h"

#include <cmath>
#include <limits>

namespace calvorn {

float countToVolts(const Configuration &configuration, double count)
{
    const double volts =
        count * static_cast<double>(configuration.adcStep) + static_cast<double>(configuration.adcOffset);
    return static_cast<float>(roundToDecimals(volts, 3));
}

float countToInputVolts(const Configuration &configuration, double count)
{
    const float volts = countToVolts(configuration, count);
    const DetectorLaw &law = lawInForce(configuration);
    return law.kind == DetectorLaw::Kind::Linear ? volts
                                                 : static_cast<float>(law.inputVolts(static_cast<double>(volts)));
}

double voltsToDb(Configuration &configuration, double volts)
{
    if (isLinearScale(configuration.scaleType))
        return volts;
    configuration.dbReference = voltsOfZeroDb(configuration.scaleType);
    if (!(volts > 0.0))
        return kFloorDb;
    return roundToDecimals(20.0 * std::log10(volts / configuration.dbReference), 2);
}

double dbToVolts(const Configuration &configuration, double value)
{
    const std::int16_t scale = configuration.scaleType;
    if (isLinearScale(scale))
        return value;
    if (!isScale(scale))
        return 0.0;
    const double volts = std::pow(10.0, value / 20.0) * voltsOfZeroDb(scale);
    if (std::isinf(volts))
        throw RuntimeError(RuntimeError::Kind::Overflow);
    return roundToDecimals(volts, 3);
}

double dbToVoltsBounded(const Configuration &configuration, double value)
{
    try {
        return dbToVolts(configuration, value);
    } catch (const RuntimeError &) {
        return std::numeric_limits<double>::max();
    }
}

QString readSetting(const QString &section, const QString &key, const QString &path, const QString &fallback)
{
    Profile profile(path);
    QString value = profile.value(section, key);
    if (!value.isEmpty())
        return value;
    profile.set({section, key, fallback});
    profile.save();
    return fallback;
}

void writeSetting(const QString &section, const QString &key, const QString &value, const QString &path)
{
    writeProfileString(path, section, key, value);
}

QString readSetting(const SettingKey &key, const QString &path)
{
    return readSetting(QString::fromLatin1(key.section), QString::fromLatin1(key.name), path,
                       QString::fromLatin1(key.fallback));
}

QString readSetting(const SettingKey &key, const Profile &profile, const QString &path)
{
    const QString value = profile.value(QString::fromLatin1(key.section), QString::fromLatin1(key.name));
    return value.isEmpty() ? readSetting(key, path) : value;
}

void writeSetting(const SettingKey &key, const QString &value, const QString &path)
{
    writeSetting(QString::fromLatin1(key.section), QString::fromLatin1(key.name), value, path);
}

QString normaliseDecimal(const QString &text)
{
    return NumberText().normaliseDecimal(text);
}

std::optional<double> enteredReal(const QString &text)
{
    const NumberText numbers;
    const QString normalised = numbers.normaliseDecimal(text);
    return numbers.isNumeric(normalised) ? std::optional(numbers.toDouble(normalised)) : std::nullopt;
}

} // namespace calvorn
