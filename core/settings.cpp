// SPDX-License-Identifier: MIT
#include "core/settings.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "platform/profile_file.h"

#include <QCoreApplication>

namespace calvorn {

namespace {

constexpr char kConfig[] = "Config";
constexpr char kDebug[] = "Debug";
constexpr char kParallelPort[] = "Parallel Port";
constexpr char kSerialPort[] = "Serial Port";
constexpr char kCalvorn[] = "Calvorn";

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

SettingsLoader::SettingsLoader(Configuration &configuration, WindowSettings &window)
    : m_configuration(configuration)
    , m_window(window)
{
}

QString SettingsLoader::read(const char *section, const char *key, const char *fallback)
{
    return readSetting(QString::fromLatin1(section), QString::fromLatin1(key), m_configuration.iniPath,
                       QString::fromLatin1(fallback));
}

template <typename Value, typename Convert>
void SettingsLoader::readNumber(Value &value, const char *section, const char *key, const char *fallback,
                                Convert convert)
{
    const QString text = read(section, key, fallback);
    try {
        value = convert(text);
    } catch (const RuntimeError &error) {
        value = convert(QString::fromLatin1(fallback));
        m_faults.append(QCoreApplication::translate("Settings", "[%1] \"%2\": %3 The default %4 is used.")
                            .arg(QString::fromLatin1(section), QString::fromLatin1(key), error.message() + u'.',
                                 QString::fromLatin1(fallback)));
    }
}

void SettingsLoader::readInt16(std::int16_t &value, const char *section, const char *key, const char *fallback)
{
    readNumber(value, section, key, fallback, [](const QString &text) { return NumberText().toInt16(text); });
}

void SettingsLoader::readInt32(std::int32_t &value, const char *section, const char *key, const char *fallback)
{
    readNumber(value, section, key, fallback, [](const QString &text) { return NumberText().toInt32(text); });
}

void SettingsLoader::readSingle(float &value, const char *section, const char *key, const char *fallback)
{
    readNumber(value, section, key, fallback,
               [](const QString &text) { return NumberText().toSingle(normaliseDecimal(text)); });
}

void SettingsLoader::readDouble(double &value, const char *section, const char *key, const char *fallback)
{
    readNumber(value, section, key, fallback,
               [](const QString &text) { return NumberText().toDouble(normaliseDecimal(text)); });
}

void SettingsLoader::readBoolean(bool &value, const char *section, const char *key, const char *fallback)
{
    readNumber(value, section, key, fallback, [](const QString &text) { return NumberText().toBoolean(text); });
}

LoadOutcome SettingsLoader::load()
{
    Configuration &c = m_configuration;
    readInt16(c.interfaceType, kConfig, "Interface", "2");

    clearProfileSection(c.iniPath, QStringLiteral("Attenuator"));
    const bool configured =
        !readProfileString(c.iniPath, QString::fromLatin1(kConfig), QStringLiteral("DDS Device")).isEmpty();
    c.msgResult = configured ? -1 : 0;
    if (!configured && firstRun)
        firstRun();

    readBoolean(c.logDebug, kDebug, "Log", "0");
    readBoolean(c.usbApi, kDebug, "USB API", "0");
    readInt32(c.slowCpu, kDebug, "Slow CPU", "0");
    if (c.slowCpu > 0)
        c.usbApi = false;

    c.ddsDevice = read(kConfig, "DDS Device", "AD9850");
    if (!isKnownDdsDevice(c.ddsDevice))
        return LoadOutcome::UnknownDdsDevice;
    readInt16(c.ddsMultiplier, kConfig, "DDS Multiplier", "1");
    readInt32(c.ddsXtalFreq, kConfig, "DDS Xtal freq", "80000000");
    readInt32(c.ddsMaxFreq, kConfig, "DDS Max freq", "60000000");
    readInt32(c.ddsMinFreq, kConfig, "DDS Min freq", "10");
    readDouble(c.ddsOffset, kConfig, "DDS Offset", "0");

    c.adcDevice = read(kConfig, "ADC Device", "10bit");
    if (!isKnownAdcDevice(c.adcDevice))
        return LoadOutcome::UnknownAdcDevice;
    readSingle(c.adcOffset, kConfig, "ADC Offset", "5");
    readSingle(c.adcStep, kConfig, "ADC Step", "0");
    readInt16(m_window.vnaMode, kConfig, "ADC Channel", "1");

    readInt16(c.lptAddress, kParallelPort, "LPT", "&H378");
    readInt16(c.commPort, kSerialPort, "CommPort", "6");
    c.serialSettings = read(kSerialPort, "Settings", "115200,N,8,1");

    readWindowSection();
    return LoadOutcome::Loaded;
}

void SettingsLoader::readWindowSection()
{
    Configuration &c = m_configuration;
    readInt16(c.scaleType, kCalvorn, "Scale", "0");
    if (c.scaleType == 10)
        c.scaleType = 3;
    readInt32(c.startFreq, kCalvorn, "Start", "1000000");
    readInt32(c.stopFreq, kCalvorn, "Stop", "10000000");
    clampFrequencies();
    readInt16(m_window.markerIndex, kCalvorn, "Marker 0", "0");
    readSingle(c.maxScaleVolt, kCalvorn, "Max scaleV", "1.5");
    readNumber(c.maxScaleDb, kCalvorn, "Max scaleDb", "-40",
               [](const QString &text) { return NumberText().toInt32(normaliseDecimal(text)); });
    readInt16(c.sweepSpeed, kCalvorn, "Sweep mode", "0");
    readInt16(c.cursorMode, kCalvorn, "Cursor mode", "0");
    readInt16(c.aux1, kCalvorn, "Aux_1", "0");
    readInt16(c.aux2, kCalvorn, "Aux_2", "0");
    readInt16(c.pot2, kCalvorn, "Pot_2", "0");
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
        const QString normalised = normaliseDecimal(text);
        NumberText().toDouble(normalised);
        return normalised;
    };
    const auto integer = [](const QString &text) {
        NumberText().toInt32(text);
        return text;
    };
    readNumber(m_window.marker3, kCalvorn, "Marker 3", "0", real);
    readNumber(m_window.marker4, kCalvorn, "Marker 4", "0", real);
    readNumber(m_window.marker1, kCalvorn, "Marker 1", "1000000", integer);
    readNumber(m_window.marker2, kCalvorn, "Marker 2", "2000000", integer);
}

bool saveSettings(const Configuration &c, const WindowSettings &window)
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
    return writeProfileStrings(c.iniPath, entries);
}

} // namespace calvorn
