// SPDX-License-Identifier: MIT
#include "setup/set_up_values.h"

#include "core/number_text.h"
#include "core/setting_reader.h"

#include <QCoreApplication>

namespace calvorn {

namespace {

constexpr const char *kConfig = "Config";
constexpr std::array kAuxSections = {"Aux1", "Aux2"};

QByteArray sectionOf(std::int16_t interfaceType)
{
    return "Interface" + QByteArray::number(interfaceType);
}

// A name in another spelling is meant for the device; any other name gives way to the default.
template <std::size_t Count>
QString readDevice(SettingReader &reader, const char *section, const char *key, const char *fallback,
                   const std::array<const char *, Count> &known, const QString &reportedDevice)
{
    const QString name = reader.text(section, key, fallback);
    for (const char *device : known)
        if (name.trimmed().compare(QLatin1String(device), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(device);
    if (reportedDevice != QLatin1String(key))
        reader.addFault(section, key, QCoreApplication::translate("SetUp", "The device \"%1\" is not known").arg(name),
                        fallback);
    return QString::fromLatin1(fallback);
}

// "caption;weight", or one text that is both.
void readStep(AuxValues &aux, std::size_t index, const QString &text)
{
    const qsizetype separator = text.indexOf(u';');
    aux.captions[index] = separator < 0 ? text : text.first(separator);
    aux.weights[index] = separator < 0 ? text : text.sliced(separator + 1);
}

void readAux(SettingReader &reader, AuxValues &aux, std::size_t output)
{
    const char *section = kAuxSections[output];
    double enabled = 0.0;
    reader.real(enabled, section, "Enabled", "0");
    aux.enabled = enabled > 0.0;
    reader.boolean(aux.inverse, section, "Inverse Logic", "0");
    aux.title = reader.text(section, "Title", QStringLiteral("Aux %1").arg(output + 1));
    for (std::size_t i = 0; i < kAuxSteps; ++i)
        readStep(aux, i,
                 reader.text(section, "Step " + QByteArray::number(static_cast<int>(i)),
                             QStringLiteral("%1dB;%1").arg((i + 1) * 10)));
}

class Entries
{
public:
    void put(const char *section, const char *key, const QString &value)
    {
        m_entries.append({QString::fromLatin1(section), QString::fromLatin1(key), value});
    }
    void putAux(const char *section, const AuxValues &aux)
    {
        put(section, "Enabled", aux.enabled ? QStringLiteral("1") : QStringLiteral("0"));
        for (std::size_t i = 0; i < kAuxSteps; ++i)
            put(section, "Step " + QByteArray::number(static_cast<int>(i)), aux.captions[i] + u';' + aux.weights[i]);
        put(section, "Inverse Logic", aux.inverse ? QStringLiteral("1") : QStringLiteral("0"));
        put(section, "Title", aux.title);
    }
    const QVector<ProfileEntry> &all() const { return m_entries; }

private:
    QVector<ProfileEntry> m_entries;
};

} // namespace

QStringList loadHardware(SetUpValues &values, const QString &path, const char *section, const QString &reportedDevice)
{
    SettingReader reader(path, SettingReader::Defaults::KeepOut);
    values.ddsDevice = readDevice(reader, section, "DDS Device", "AD9850", kDdsDevices, reportedDevice);
    reader.int16(values.ddsMultiplier, section, "DDS Multiplier", "1");
    reader.int32(values.ddsXtalFreq, section, "DDS Xtal freq", "80000000");
    reader.int32(values.ddsMaxFreq, section, "DDS Max freq", "60000000");
    reader.int32(values.ddsMinFreq, section, "DDS Min freq", "10");
    reader.real(values.ddsOffset, section, "DDS Offset", "0");
    values.adcDevice = readDevice(reader, section, "ADC Device", "10bit", kAdcDevices, reportedDevice);
    reader.single(values.adcStep, section, "ADC Step", "0");
    reader.int16(values.measuringMode, section, "ADC Channel", "1");
    reader.single(values.adcOffset, section, "ADC Offset", "5");
    for (std::size_t output = 0; output < values.aux.size(); ++output)
        readAux(reader, values.aux[output], output);
    values.potMax = reader.text(kAuxSections[1], "PotMax", "");
    values.potMin = reader.text(kAuxSections[1], "PotMin", "");
    return reader.faults();
}

QStringList loadPorts(SetUpValues &values, const QString &path)
{
    SettingReader reader(path, SettingReader::Defaults::KeepOut);
    reader.int16(values.interfaceType, kConfig, "Interface", "2");
    reader.int16(values.lptAddress, "Parallel Port", "LPT", "&H378");
    reader.int16(values.commPort, "Serial Port", "CommPort", "6");
    return reader.faults();
}

bool hasDefaults(const QString &path, std::int16_t interfaceType)
{
    return !readProfileString(path, QString::fromLatin1(sectionOf(interfaceType)), QStringLiteral("DDS Device"))
                .isEmpty();
}

QStringList loadDefaults(SetUpValues &values, const QString &path, std::int16_t interfaceType)
{
    return loadHardware(values, path, sectionOf(interfaceType).constData());
}

QVector<ProfileEntry> entriesOf(const SetUpValues &values)
{
    const NumberText numbers;
    const QString address = QString::number(static_cast<std::uint16_t>(values.lptAddress), 16).toUpper();
    Entries entries;
    entries.put(kConfig, "Interface", NumberText::fromInteger(values.interfaceType));
    entries.put(kConfig, "DDS Device", values.ddsDevice);
    entries.put(kConfig, "DDS Xtal freq", NumberText::fromInteger(values.ddsXtalFreq));
    entries.put(kConfig, "DDS Multiplier", NumberText::fromInteger(values.ddsMultiplier));
    // A capital F here; keys are matched without regard to case.
    entries.put(kConfig, "DDS Max Freq", NumberText::fromInteger(values.ddsMaxFreq));
    entries.put(kConfig, "DDS Min Freq", NumberText::fromInteger(values.ddsMinFreq));
    entries.put(kConfig, "DDS Offset", numbers.fromDouble(values.ddsOffset));
    entries.put(kConfig, "ADC Device", values.adcDevice);
    entries.put(kConfig, "ADC Step", numbers.fromSingle(values.adcStep));
    entries.put(kConfig, "ADC Offset", numbers.fromSingle(values.adcOffset));
    entries.put(kConfig, "ADC Channel", NumberText::fromInteger(values.measuringMode));
    entries.put("Serial Port", "CommPort", NumberText::fromInteger(values.commPort));
    entries.put("Parallel Port", "LPT", QStringLiteral("&H") + address);
    for (std::size_t output = 0; output < values.aux.size(); ++output)
        entries.putAux(kAuxSections[output], values.aux[output]);
    entries.put(kAuxSections[1], "PotMax", values.potMax);
    entries.put(kAuxSections[1], "PotMin", values.potMin);
    return entries.all();
}

} // namespace calvorn
