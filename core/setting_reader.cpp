// SPDX-License-Identifier: MIT
#include "core/setting_reader.h"

#include "core/common_functions.h"
#include "core/runtime_error.h"

#include <QCoreApplication>

namespace calvorn {

SettingReader::SettingReader(const QString &path, Defaults defaults)
    : m_path(path)
    , m_profile(path)
    , m_defaults(defaults)
{
}

QString SettingReader::text(const SettingKey &key)
{
    const QString section = QString::fromLatin1(key.section);
    const QString name = QString::fromLatin1(key.name);
    QString value = m_profile.value(section, name);
    if (!value.isEmpty())
        return value;
    const QString fallback = QString::fromLatin1(key.fallback);
    if (m_defaults == Defaults::WriteBack)
        m_missing.append({section, name, fallback});
    return fallback;
}

void SettingReader::clear(const QString &section)
{
    if (m_profile.clear(section))
        m_cleared.append(section);
}

void SettingReader::save()
{
    if (m_defaults == Defaults::KeepOut || m_profile.isRefused() || (m_missing.isEmpty() && m_cleared.isEmpty()))
        return;
    Profile file(m_path);
    for (const QString &section : m_cleared)
        file.clear(section);
    for (const ProfileEntry &entry : m_missing)
        if (file.value(entry.section, entry.key).isEmpty())
            file.set(entry);
    file.save();
    m_cleared.clear();
    m_missing.clear();
}

void SettingReader::converting(const SettingKey &key, const std::function<void()> &conversion)
{
    try {
        conversion();
    } catch (const RuntimeError &error) {
        addFault(key, error.message());
    }
}

void SettingReader::addFault(const SettingKey &key, const QString &what)
{
    const QString section = QString::fromLatin1(key.section);
    const QString name = QString::fromLatin1(key.name);
    m_unreadable.insert({section, name});
    m_faults.append(QCoreApplication::translate("Settings", "[%1] \"%2\": %3 The default %4 is used.")
                        .arg(section, name, what + u'.', QString::fromLatin1(key.fallback)));
}

void SettingReader::read(std::int16_t &value, const SettingKey &key)
{
    number(value, key, [](const QString &text) { return NumberText().toInt16(text); });
}

void SettingReader::read(std::int32_t &value, const SettingKey &key)
{
    number(value, key, [](const QString &text) { return NumberText().toInt32(text); });
}

void SettingReader::read(float &value, const SettingKey &key)
{
    number(value, key, [](const QString &text) { return NumberText().toSingle(normaliseDecimal(text)); });
}

void SettingReader::read(double &value, const SettingKey &key)
{
    number(value, key, [](const QString &text) { return NumberText().toDouble(normaliseDecimal(text)); });
}

void SettingReader::read(bool &value, const SettingKey &key)
{
    number(value, key, [](const QString &text) { return NumberText().toBoolean(text); });
}

void SettingReader::int16OrNone(std::int16_t &value, const SettingKey &key, std::int16_t none)
{
    const QString found = text(key);
    try {
        value = NumberText().toInt16(found);
    } catch (const RuntimeError &error) {
        value = none;
        m_faults.append(
            QCoreApplication::translate("Settings", "[%1] \"%2\": %3 No port is opened.")
                .arg(QString::fromLatin1(key.section), QString::fromLatin1(key.name), error.message() + u'.'));
    }
}

} // namespace calvorn
