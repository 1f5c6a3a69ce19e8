// SPDX-License-Identifier: MIT
#include "core/settings.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "platform/profile_file.h"

namespace calvorn {

namespace {

constexpr const char *kConfig = "Config";
constexpr const char *kDebug = "Debug";
constexpr const char *kParallelPort = "Parallel Port";
constexpr const char *kSerialPort = "Serial Port";
constexpr const char *kCalvorn = "Calvorn";

// A name passes when it stands anywhere inside the list of names; so does an empty one.
bool isKnownDdsDevice(const QString &name)
{
    return QStringLiteral("AD9850AD9851AD9951").contains(name);
}

bool isKnownAdcDevice(const QString &name)
{
    return QStringLiteral("8bit10bit").contains(name);
}

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
    // The first run may have been cut short.
    if (outcome != LoadOutcome::Ended)
        m_reader.save();
    return outcome;
}

LoadOutcome SettingsLoader::readAll()
{
    Configuration &c = m_configuration;
    m_reader.int16(c.interfaceType, kConfig, "Interface", "2");

    m_reader.clear(QStringLiteral("Attenuator"));
    const bool configured = !profile().value(QString::fromLatin1(kConfig), QStringLiteral("DDS Device")).isEmpty();
    c.msgResult = configured ? -1 : 0;
    if (!configured && firstRun) {
        m_reader.save(); // the configuration writes behind what has been read so far
        if (!firstRun())
            return LoadOutcome::Ended;
    }

    m_reader.boolean(c.logDebug, kDebug, "Log", "0");
    m_reader.boolean(c.usbApi, kDebug, "USB API", "0");
    m_reader.int32(c.slowCpu, kDebug, "Slow CPU", "0");
    if (c.slowCpu > 0)
        c.usbApi = false;

    c.ddsDevice = m_reader.text(kConfig, "DDS Device", "AD9850");
    if (!isKnownDdsDevice(c.ddsDevice))
        return LoadOutcome::UnknownDdsDevice;
    m_reader.int16(c.ddsMultiplier, kConfig, "DDS Multiplier", "1");
    m_reader.int32(c.ddsXtalFreq, kConfig, "DDS Xtal freq", "80000000");
    m_reader.int32(c.ddsMaxFreq, kConfig, "DDS Max freq", "60000000");
    m_reader.int32(c.ddsMinFreq, kConfig, "DDS Min freq", "10");
    m_reader.real(c.ddsOffset, kConfig, "DDS Offset", "0");

    c.adcDevice = m_reader.text(kConfig, "ADC Device", "10bit");
    if (!isKnownAdcDevice(c.adcDevice))
        return LoadOutcome::UnknownAdcDevice;
    m_reader.single(c.adcOffset, kConfig, "ADC Offset", "5");
    m_reader.single(c.adcStep, kConfig, "ADC Step", "0");
    m_reader.int16(c.measuringMode, kConfig, "ADC Channel", "1");

    m_reader.int16OrNone(c.lptAddress, kParallelPort, "LPT", "&H378", kNoParallelAddress);
    m_reader.int16(c.commPort, kSerialPort, "CommPort", "6");
    c.serialSettings = m_reader.text(kSerialPort, "Settings", "115200,N,8,1");

    readWindowSection();
    return LoadOutcome::Loaded;
}

void SettingsLoader::readWindowSection()
{
    Configuration &c = m_configuration;
    m_reader.int16(c.scaleType, kCalvorn, "Scale", "0");
    if (c.scaleType == 10)
        c.scaleType = kScaleDb10V;
    m_reader.int32(c.startFreq, kCalvorn, "Start", "1000000");
    m_reader.int32(c.stopFreq, kCalvorn, "Stop", "10000000");
    clampFrequencies();
    m_reader.int16(m_window.markerIndex, kCalvorn, "Marker 0", "0");
    m_reader.single(c.maxScaleVolt, kCalvorn, "Max scaleV", "1.5");
    m_reader.number(c.maxScaleDb, kCalvorn, "Max scaleDb", "-40",
                    [](const QString &text) { return NumberText().toInt32(normaliseDecimal(text)); });
    m_reader.int16(c.sweepSpeed, kCalvorn, "Sweep mode", "0");
    m_reader.int16(c.cursorMode, kCalvorn, "Cursor mode", "0");
    m_reader.int16(c.aux1, kCalvorn, "Aux_1", "0");
    m_reader.int16(c.aux2, kCalvorn, "Aux_2", "0");
    m_reader.int16(c.pot2, kCalvorn, "Pot_2", "0");
}

// A start above the maximum falls to the minimum, not to the maximum; a stop has no lower limit.
void SettingsLoader::clampFrequencies()
{
    Configuration &c = m_configuration;
    if (c.startFreq > c.ddsMaxFreq || c.startFreq < c.ddsMinFreq)
        c.startFreq = c.ddsMinFreq;
    if (c.stopFreq > c.ddsMaxFreq)
        c.stopFreq = c.ddsMaxFreq;
}

// The texts are kept as they are; a text that does not convert gives way to the default.
void SettingsLoader::loadMarkers()
{
    const auto real = [](const QString &text) {
        QString normalised = normaliseDecimal(text);
        NumberText().toDouble(normalised);
        return normalised;
    };
    const auto integer = [](const QString &text) {
        NumberText().toInt32(text);
        return text;
    };
    m_reader.number(m_window.marker3, kCalvorn, "Marker 3", "0", real);
    m_reader.number(m_window.marker4, kCalvorn, "Marker 4", "0", real);
    m_reader.number(m_window.marker1, kCalvorn, "Marker 1", "1000000", integer);
    m_reader.number(m_window.marker2, kCalvorn, "Marker 2", "2000000", integer);
    m_reader.save();
}

namespace {

QVector<ProfileEntry> savedEntries(const Configuration &c, const WindowSettings &window)
{
    const NumberText numbers;
    const auto plainNumber = [&](const QString &text) {
        return numbers.isNumeric(text) ? numbers.generalNumber(text) : QStringLiteral("0");
    };
    const auto markerText = [&](const QString &text) { return numbers.isNumeric(text) ? text : QStringLiteral("0"); };
    QVector<ProfileEntry> entries;
    const auto put = [&](const char *section, const char *key, const QString &value) {
        entries.append({QString::fromLatin1(section), QString::fromLatin1(key), value});
    };
    put(kCalvorn, "Start", NumberText::fromInteger(c.startFreq));
    put(kCalvorn, "Stop", NumberText::fromInteger(c.stopFreq));
    put(kCalvorn, "Marker 0", NumberText::fromInteger(window.markerIndex));
    put(kCalvorn, "Marker 1", plainNumber(window.marker1));
    put(kCalvorn, "Marker 2", plainNumber(window.marker2));
    put(kCalvorn, "Marker 3", markerText(window.marker3));
    put(kCalvorn, "Marker 4", markerText(window.marker4));
    put(kCalvorn, "Max scaleV", numbers.fromSingle(c.maxScaleVolt));
    put(kCalvorn, "Max scaleDb", NumberText::fromInteger(c.maxScaleDb));
    put(kCalvorn, "Scale", NumberText::fromInteger(c.scaleType));
    put(kCalvorn, "Sweep mode", NumberText::fromInteger(c.sweepSpeed));
    put(kCalvorn, "Aux_1", NumberText::fromInteger(c.aux1));
    put(kCalvorn, "Aux_2", NumberText::fromInteger(c.aux2));
    put(kCalvorn, "Pot_2", NumberText::fromInteger(c.pot2));
    put(kConfig, "DDS Offset", numbers.fromDouble(c.ddsOffset));
    put(kConfig, "ADC Offset", numbers.fromSingle(c.adcOffset));
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
