// SPDX-License-Identifier: MIT
#include "setup/set_up_values.h"

#include "core/detector_settings.h"
#include "core/number_text.h"
#include "core/setting_reader.h"
#include "core/settings_table.h"

#include <QCoreApplication>

#include <type_traits>
#include <variant>

namespace calvorn {

namespace {

// Reads the name of a device, ignoring case, and replaces an unknown name with the default.
template <std::size_t Count>
QString readDevice(SettingReader &reader, const SettingKey &key, const std::array<const char *, Count> &known,
                   bool isReported)
{
    const QString name = reader.text(key);
    for (const char *device : known)
        if (name.trimmed().compare(QLatin1String(device), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(device);
    if (!isReported)
        reader.addFault(key, QCoreApplication::translate("SetUp", "Unknown device \"%1\"").arg(name));
    return QString::fromLatin1(key.fallback);
}

// Calls the action with the working copy of a row's value, if the row has one.
template <typename Action>
void withValue(auto &values, const SettingRow &row, Action action)
{
    std::visit(
        [&](auto field) {
            if constexpr (std::is_invocable_v<decltype(field), decltype(values)>)
                action(values.*field);
        },
        row.field);
}

void readValue(SettingReader &reader, SetUpValues &values, const SettingRow &row, const SettingKey &key)
{
    withValue(values, row, [&](auto &value) { reader.read(value, key); });
}

// text: "caption;weight", or one string for both.
void readStep(AuxValues &aux, std::size_t index, const QString &text)
{
    const qsizetype separator = text.indexOf(u';');
    aux.captions[index] = separator < 0 ? text : text.first(separator);
    aux.weights[index] = separator < 0 ? text : text.sliced(separator + 1);
}

void readAux(SettingReader &reader, AuxValues &aux, const AuxKeys &keys)
{
    double enabled = 0.0;
    reader.read(enabled, keys.enabled);
    aux.enabled = enabled > 0.0;
    reader.read(aux.inverse, keys.inverse);
    reader.read(aux.title, keys.title);
    for (std::size_t i = 0; i < kAuxSteps; ++i)
        readStep(aux, i, reader.text(keys.steps[i]));
}

QStringList loadFrom(const char *section, SetUpValues &values, const QString &path,
                     const std::optional<SettingKey> &reportedDevice)
{
    SettingReader reader(path, SettingReader::Defaults::KeepOut);
    for (const SettingRow *row : settingsInOrder(&SettingPlaces::hardware)) {
        const SettingKey key = row->key.in(section);
        const bool isReported = reportedDevice == row->key;
        if (row->key == kDdsDevice)
            values.ddsDevice = readDevice(reader, key, kDdsDevices, isReported);
        else if (row->key == kAdcDevice)
            values.adcDevice = readDevice(reader, key, kAdcDevices, isReported);
        else
            readValue(reader, values, *row, key);
    }
    for (std::size_t output = 0; output < values.aux.size(); ++output)
        readAux(reader, values.aux[output], kAuxKeys[output]);
    reader.read(values.potMax, kPotMax);
    reader.read(values.potMin, kPotMin);
    QStringList faults = reader.faults();
    values.detectorLaw = readDetectorLaw(reader.profile(), faults);
    values.isLawChosen = false;
    return faults;
}

class Entries
{
public:
    void put(const SettingKey &key, const QString &value) { put(key, key.name, value); }
    void put(const SettingKey &key, const char *name, const QString &value)
    {
        m_entries.append({QString::fromLatin1(key.section), QString::fromLatin1(name), value});
    }
    void putAux(const AuxKeys &keys, const AuxValues &aux)
    {
        const NumberText numbers;
        put(keys.enabled, settingText(numbers, aux.enabled));
        for (std::size_t i = 0; i < kAuxSteps; ++i)
            put(keys.steps[i], aux.captions[i] + u';' + aux.weights[i]);
        put(keys.inverse, settingText(numbers, aux.inverse));
        put(keys.title, aux.title);
    }
    const QVector<ProfileEntry> &all() const { return m_entries; }

private:
    QVector<ProfileEntry> m_entries;
};

QString hexadecimal(std::int16_t address)
{
    return QStringLiteral("&H") + QString::number(static_cast<std::uint16_t>(address), 16).toUpper();
}

} // namespace

QStringList loadHardware(SetUpValues &values, const QString &path, const std::optional<SettingKey> &reportedDevice)
{
    return loadFrom(kConfigSection, values, path, reportedDevice);
}

QStringList loadPorts(SetUpValues &values, const QString &path)
{
    SettingReader reader(path, SettingReader::Defaults::KeepOut);
    for (const SettingRow *row : settingsInOrder(&SettingPlaces::port))
        readValue(reader, values, *row, row->key);
    return reader.faults();
}

QByteArray preparedSection(std::int16_t interfaceType)
{
    return "Interface" + QByteArray::number(interfaceType);
}

bool hasDefaults(const QString &path, std::int16_t interfaceType)
{
    return !readText(path, kDdsDevice.in(preparedSection(interfaceType).constData())).isEmpty();
}

QStringList loadDefaults(SetUpValues &values, const QString &path, std::int16_t interfaceType)
{
    return loadFrom(preparedSection(interfaceType).constData(), values, path, {});
}

QVector<ProfileEntry> entriesOf(const SetUpValues &values)
{
    const NumberText numbers;
    Entries entries;
    for (const SettingRow *row : settingsInOrder(&SettingPlaces::apply)) {
        QString text;
        if (row->kind == SettingKind::Address)
            text = hexadecimal(values.lptAddress);
        else
            withValue(values, *row, [&](const auto &value) { text = settingText(numbers, value); });
        entries.put(row->key, row->appliedName ? row->appliedName : row->key.name, text);
    }
    for (std::size_t output = 0; output < values.aux.size(); ++output)
        entries.putAux(kAuxKeys[output], values.aux[output]);
    entries.put(kPotMax, values.potMax);
    entries.put(kPotMin, values.potMin);
    return entries.all();
}

} // namespace calvorn
