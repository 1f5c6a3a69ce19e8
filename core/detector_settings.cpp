// SPDX-License-Identifier: MIT
#include "core/detector_settings.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/runtime_error.h"

#include <QCoreApplication>

#include <array>
#include <cmath>
#include <optional>

namespace calvorn {

namespace {

struct DetectorSettingsTexts
{
    Q_DECLARE_TR_FUNCTIONS(Settings)
};

struct NamedLaw
{
    DetectorLaw::Kind kind;
    const char *name;
};

constexpr std::array kLaws{NamedLaw{DetectorLaw::Kind::Linear, "linear"}, NamedLaw{DetectorLaw::Kind::Log, "log"},
                           NamedLaw{DetectorLaw::Kind::Table, "table"}};

QString text(const Profile &profile, const SettingKey &key)
{
    return profile.value(QString::fromLatin1(key.section), QString::fromLatin1(key.name));
}

ProfileEntry entry(const SettingKey &key, const QString &value)
{
    return {QString::fromLatin1(key.section), QString::fromLatin1(key.name), value};
}

QString pointKey(std::size_t number)
{
    return QStringLiteral("Point %1").arg(number);
}

QString pointText(const Profile &profile, std::size_t number)
{
    return profile.value(QString::fromLatin1(kDetectorSection), pointKey(number));
}

QString linearInstead(const char *section, const QString &key, const QString &what)
{
    return DetectorSettingsTexts::tr("[%1] \"%2\": %3 The detector is treated as linear.")
        .arg(QString::fromLatin1(section), key, what);
}

// Returns NaN, which makes the law unusable, if the value is not a number.
double realOf(const Profile &profile, const SettingKey &key)
{
    const QString found = text(profile, key);
    return enteredReal(found.isEmpty() ? QString::fromLatin1(key.fallback) : found).value_or(std::nan(""));
}

// Returns all points. If a point is missing or invalid, stops before it and stores its number in `bad`.
std::vector<DetectorLaw::Point> pointsOf(const Profile &profile, std::optional<std::size_t> &bad)
{
    std::size_t last = DetectorLaw::kMostPoints;
    while (last > 0 && pointText(profile, last).isEmpty())
        --last;
    std::vector<DetectorLaw::Point> points;
    for (std::size_t number = 1; number <= last; ++number) {
        const QString both = pointText(profile, number);
        const std::optional<double> volts = enteredReal(both.section(u';', 0, 0));
        const std::optional<double> dBm = enteredReal(both.section(u';', 1));
        if (!volts || !dBm || !DetectorLaw::isPoint({*volts, *dBm})) {
            bad = number;
            break;
        }
        points.push_back({*volts, *dBm});
    }
    return points;
}

QString pointFault(const Profile &profile, std::size_t number)
{
    const QString both = pointText(profile, number);
    return both.isEmpty() ? DetectorSettingsTexts::tr("This point is missing, but later points exist.")
                          : DetectorSettingsTexts::tr("\"%1\" is not \"volts;dBm\".").arg(both);
}

QVector<ProfileEntry> pointEntries(const std::vector<DetectorLaw::Point> &points, const Profile &profile)
{
    const NumberText numbers;
    QVector<ProfileEntry> entries;
    for (std::size_t number = 1; number <= DetectorLaw::kMostPoints; ++number) {
        QString both;
        if (number <= points.size()) {
            const DetectorLaw::Point &point = points[number - 1];
            both = numbers.fromDouble(point.volts) + u';' + numbers.fromDouble(point.dBm);
        }
        // Clear the keys of removed points.
        if (!both.isEmpty() || !pointText(profile, number).isEmpty())
            entries.append({QString::fromLatin1(kDetectorSection), pointKey(number), both});
    }
    return entries;
}

QString faultOf(const DetectorLaw &law, const Profile &profile, const std::optional<std::size_t> &badPoint)
{
    if (law.kind == DetectorLaw::Kind::Log && !law.isUsable()) {
        const bool isSlope = !DetectorLaw::isSlope(law.slope);
        const SettingKey &key = isSlope ? kDetectorSlope : kDetectorIntercept;
        return linearInstead(key.section, QString::fromLatin1(key.name),
                             isSlope
                                 ? DetectorSettingsTexts::tr("\"%1\" is not a valid slope.").arg(text(profile, key))
                                 : DetectorSettingsTexts::tr("\"%1\" is not a valid level.").arg(text(profile, key)));
    }
    if (law.kind != DetectorLaw::Kind::Table)
        return {};
    if (badPoint)
        return linearInstead(kDetectorSection, pointKey(*badPoint), pointFault(profile, *badPoint));
    if (law.points().size() < DetectorLaw::kFewestPoints)
        return linearInstead(kDetectorSection, pointKey(law.points().size() + 1),
                             DetectorSettingsTexts::tr("A table needs at least two points."));
    if (const std::size_t turning = law.turningPoint(); turning > 0)
        return linearInstead(kDetectorSection, pointKey(turning),
                             DetectorSettingsTexts::tr("The level must rise or fall steadily with the voltage."));
    return {};
}

} // namespace

DetectorLaw readDetectorLaw(const Profile &profile, QStringList &faults)
{
    DetectorLaw law;
    std::optional<std::size_t> badPoint;
    law.slope = realOf(profile, kDetectorSlope);
    law.intercept = realOf(profile, kDetectorIntercept);
    law.setPoints(pointsOf(profile, badPoint));
    const QString name = text(profile, kAdcLaw).trimmed();
    bool isKnown = name.isEmpty();
    for (const NamedLaw &known : kLaws) {
        if (name.compare(QLatin1String(known.name), Qt::CaseInsensitive) != 0)
            continue;
        law.kind = known.kind;
        isKnown = true;
    }
    const QString fault = isKnown ? faultOf(law, profile, badPoint)
                                  : linearInstead(kAdcLaw.section, QString::fromLatin1(kAdcLaw.name),
                                                  DetectorSettingsTexts::tr("\"%1\" is not a known law.").arg(name));
    if (!fault.isEmpty()) {
        faults.append(fault);
        law.kind = DetectorLaw::Kind::Linear;
    }
    // The set-up dialog offers these values even if another law is selected, so they must be valid.
    if (!DetectorLaw::isSlope(law.slope))
        law.slope = DetectorLaw().slope;
    if (!DetectorLaw::isLevel(law.intercept))
        law.intercept = DetectorLaw().intercept;
    DetectorLaw table = law;
    table.kind = DetectorLaw::Kind::Table;
    if (badPoint || !table.isUsable())
        law.setPoints({});
    return law;
}

QVector<ProfileEntry> detectorLawEntries(const DetectorLaw &law, const Profile &profile)
{
    QStringList faults;
    const DetectorLaw known = readDetectorLaw(profile, faults);
    if (known == law && faults.isEmpty())
        return {};
    const NumberText numbers;
    QVector<ProfileEntry> entries;
    for (const NamedLaw &named : kLaws)
        if (named.kind == law.kind)
            entries.append(entry(kAdcLaw, QString::fromLatin1(named.name)));
    if (law.kind == DetectorLaw::Kind::Log || law.slope != known.slope)
        entries.append(entry(kDetectorSlope, numbers.fromDouble(law.slope)));
    if (law.kind == DetectorLaw::Kind::Log || law.intercept != known.intercept)
        entries.append(entry(kDetectorIntercept, numbers.fromDouble(law.intercept)));
    if (law.kind == DetectorLaw::Kind::Table || law.points() != known.points())
        entries += pointEntries(law.points(), profile);
    return entries;
}

void writeDetectorLaw(const DetectorLaw &law, const QString &settingsFile)
{
    if (!writeProfileStrings(settingsFile, detectorLawEntries(law, Profile(settingsFile))))
        throw RuntimeError(RuntimeError::Kind::File,
                           DetectorSettingsTexts::tr("the law could not be written to %1").arg(settingsFile));
}

} // namespace calvorn
