// SPDX-License-Identifier: MIT
#include "core/settings.h"

#include "core/common_functions.h"
#include "core/detector_settings.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "platform/profile_file.h"
#include "protocol/devices.h"

#include <type_traits>
#include <variant>

namespace calvorn {

namespace {

// Obsolete section, cleared at each start.
constexpr const char *kAttenuatorSection = "Attenuator";

constexpr std::int16_t kOldScaleDb10V = 10; // in files from old versions

// Accepts any substring of the concatenated device names, including an empty string.
bool isKnownDdsDevice(const QString &name)
{
    QString names;
    for (const DdsChipFacts &chip : kDdsChips)
        names += QLatin1String(chip.name);
    return names.contains(name);
}

bool isKnownAdcDevice(const QString &name)
{
    return (QString::fromLatin1(kAdc8Bit) + QLatin1String(kAdc10Bit)).contains(name);
}

template <typename Value, typename Record>
auto &fieldOf(auto &configuration, auto &window, Value Record::*field)
{
    if constexpr (std::is_same_v<Record, WindowSettings>)
        return window.*field;
    else
        return configuration.*field;
}

// Reads one value according to its kind.
struct ReadValue
{
    SettingReader &reader;
    const SettingRow &row;

    template <typename Value>
    void operator()(Value &value) const
    {
        reader.read(value, row.key);
    }
    void operator()(std::int16_t &value) const
    {
        if (row.kind == SettingKind::Address)
            reader.int16OrNone(value, row.key, kNoParallelAddress);
        else
            reader.read(value, row.key);
    }
    void operator()(std::int32_t &value) const
    {
        if (row.kind == SettingKind::Decibels)
            reader.number(value, row.key,
                          [](const QString &text) { return NumberText().toInt32(normaliseDecimal(text)); });
        else
            reader.read(value, row.key);
    }
    // Markers are stored as text; invalid text is replaced with the default.
    void operator()(QString &value) const
    {
        if (row.kind == SettingKind::MarkerLevel)
            reader.number(value, row.key, [](const QString &text) {
                QString normalised = normaliseDecimal(text);
                NumberText().toDouble(normalised);
                return normalised;
            });
        else if (row.kind == SettingKind::MarkerFrequency)
            reader.number(value, row.key, [](const QString &text) {
                NumberText().toInt32(text);
                return text;
            });
        else
            reader.read(value, row.key);
    }
};

// Returns the text to save.
struct SaveValue
{
    const NumberText &numbers;
    SettingKind kind;

    template <typename Value>
    QString operator()(const Value &value) const
    {
        return settingText(numbers, value);
    }
    QString operator()(const QString &value) const
    {
        if (kind == SettingKind::Text)
            return value;
        if (!numbers.isNumeric(value))
            return QStringLiteral("0");
        return kind == SettingKind::MarkerFrequency ? numbers.generalNumber(value) : value;
    }
};

} // namespace

SettingsLoader::SettingsLoader(Configuration &configuration, WindowSettings &window, SettingReader::Defaults defaults)
    : m_configuration(configuration)
    , m_window(window)
    , m_defaults(defaults)
    , m_reader({}, defaults)
{
}

LoadOutcome SettingsLoader::load()
{
    m_reader = SettingReader(m_configuration.iniPath, m_defaults);
    if (refused && wasRefused())
        refused(m_reader.profile().reason());
    const LoadOutcome outcome = readAll();
    QStringList faults;
    m_configuration.detectorLaw = readDetectorLaw(profile(), faults);
    m_reader.addFaults(faults);
    // A cancelled first run writes no defaults.
    if (outcome != LoadOutcome::Ended)
        m_reader.save();
    return outcome;
}

LoadOutcome SettingsLoader::readAll()
{
    Configuration &c = m_configuration;
    readRows(kInterface, kInterface);
    if (announceFirstRun() == LoadOutcome::Ended)
        return LoadOutcome::Ended;

    readRows(kLog, kDdsDevice);
    if (c.slowCpu > 0)
        c.usbApi = false;
    if (!isKnownDdsDevice(c.ddsDevice))
        return LoadOutcome::UnknownDdsDevice;

    readRows(kDdsMultiplier, kAdcDevice);
    if (!isKnownAdcDevice(c.adcDevice))
        return LoadOutcome::UnknownAdcDevice;

    readRows(kAdcOffset, kPot2);
    if (c.scaleType == kOldScaleDb10V)
        c.scaleType = kScaleDb10V;
    clampFrequencies();
    return LoadOutcome::Loaded;
}

LoadOutcome SettingsLoader::announceFirstRun()
{
    m_reader.clear(QString::fromLatin1(kAttenuatorSection));
    const bool configured =
        !profile().value(QString::fromLatin1(kDdsDevice.section), QString::fromLatin1(kDdsDevice.name)).isEmpty();
    m_configuration.msgResult = configured ? -1 : 0;
    if (configured || !firstRun)
        return LoadOutcome::Loaded;
    m_reader.save(); // the first-run configuration writes to the file after this
    return firstRun() ? LoadOutcome::Loaded : LoadOutcome::Ended;
}

void SettingsLoader::readRows(const SettingKey &first, const SettingKey &last)
{
    bool isIn = false;
    for (const SettingRow &row : settingsTable()) {
        isIn = isIn || row.key == first;
        if (isIn)
            read(row);
        if (row.key == last)
            return;
    }
}

void SettingsLoader::read(const SettingRow &row)
{
    std::visit([&](auto field) { ReadValue{m_reader, row}(fieldOf(m_configuration, m_window, field)); }, row.field);
}

// A start frequency above the maximum becomes the minimum, not the maximum; a stop frequency has no lower limit.
void SettingsLoader::clampFrequencies()
{
    Configuration &c = m_configuration;
    if (c.startFreq > c.ddsMaxFreq || c.startFreq < c.ddsMinFreq)
        c.startFreq = c.ddsMinFreq;
    if (c.stopFreq > c.ddsMaxFreq)
        c.stopFreq = c.ddsMaxFreq;
}

void SettingsLoader::loadMarkers()
{
    readRows(kMarker3, kMarker2);
    m_reader.save();
}

namespace {

QVector<ProfileEntry> savedEntries(const Configuration &configuration, const WindowSettings &window)
{
    const NumberText numbers;
    QVector<ProfileEntry> entries;
    for (const SettingRow *row : settingsInOrder(&SettingPlaces::shutdown)) {
        const QString text = std::visit(
            [&](auto field) {
                return SaveValue{numbers, row->kind}(fieldOf(configuration, window, field));
            },
            row->field);
        entries.append({QString::fromLatin1(row->key.section), QString::fromLatin1(row->key.name), text});
    }
    return entries;
}

} // namespace

QVector<ProfileEntry> SettingsLoader::unreadableEntries() const
{
    QVector<ProfileEntry> entries = savedEntries(m_configuration, m_window);
    entries.removeIf([this](const ProfileEntry &entry) { return !m_reader.isUnreadable(entry.section, entry.key); });
    return entries;
}

bool saveSettings(const Configuration &configuration, const WindowSettings &window,
                  const QVector<ProfileEntry> &untouched)
{
    QVector<ProfileEntry> entries = savedEntries(configuration, window);
    entries.removeIf([&untouched](const ProfileEntry &entry) { return untouched.contains(entry); });
    return writeProfileStrings(configuration.iniPath, entries);
}

} // namespace calvorn
