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

QString SettingReader::text(const char *section, const char *key, const QString &fallback)
{
    const QString sectionName = QString::fromLatin1(section);
    const QString keyName = QString::fromLatin1(key);
    QString value = m_profile.value(sectionName, keyName);
    if (!value.isEmpty())
        return value;
    if (m_defaults == Defaults::WriteBack)
        m_missing.append({sectionName, keyName, fallback});
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

void SettingReader::converting(const char *section, const char *key, const char *fallback,
                               const std::function<void()> &conversion)
{
    try {
        conversion();
    } catch (const RuntimeError &error) {
        addFault(section, key, error.message(), fallback);
    }
}

void SettingReader::addFault(const char *section, const char *key, const QString &what, const char *fallback)
{
    m_unreadable.insert({QString::fromLatin1(section), QString::fromLatin1(key)});
    m_faults.append(
        QCoreApplication::translate("Settings", "[%1] \"%2\": %3 The default %4 is used.")
            .arg(QString::fromLatin1(section), QString::fromLatin1(key), what + u'.', QString::fromLatin1(fallback)));
}

void SettingReader::int16(std::int16_t &value, const char *section, const char *key, const char *fallback)
{
    number(value, section, key, fallback, [](const QString &text) { return NumberText().toInt16(text); });
}

void SettingReader::int16OrNone(std::int16_t &value, const char *section, const char *key, const char *fallback,
                                std::int16_t none)
{
    const QString read = text(section, key, fallback);
    try {
        value = NumberText().toInt16(read);
    } catch (const RuntimeError &error) {
        value = none;
        m_faults.append(QCoreApplication::translate("Settings", "[%1] \"%2\": %3 No port is opened.")
                            .arg(QString::fromLatin1(section), QString::fromLatin1(key), error.message() + u'.'));
    }
}

void SettingReader::int32(std::int32_t &value, const char *section, const char *key, const char *fallback)
{
    number(value, section, key, fallback, [](const QString &text) { return NumberText().toInt32(text); });
}

void SettingReader::single(float &value, const char *section, const char *key, const char *fallback)
{
    number(value, section, key, fallback,
           [](const QString &text) { return NumberText().toSingle(normaliseDecimal(text)); });
}

void SettingReader::real(double &value, const char *section, const char *key, const char *fallback)
{
    number(value, section, key, fallback,
           [](const QString &text) { return NumberText().toDouble(normaliseDecimal(text)); });
}

void SettingReader::boolean(bool &value, const char *section, const char *key, const char *fallback)
{
    number(value, section, key, fallback, [](const QString &text) { return NumberText().toBoolean(text); });
}

} // namespace calvorn
