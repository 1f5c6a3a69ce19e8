// SPDX-License-Identifier: MIT
#pragma once

#include "core/number_text.h"
#include "platform/profile_file.h"
#include "protocol/setting_key.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace calvorn {

// Reads the settings file once and returns its values. A missing or empty key yields its default.
//
// An invalid value affects only its own key: the default is used, the invalid value stays in the file, and faults()
// names section, key and value.
class SettingReader
{
public:
    // Determines whether save() writes the defaults of missing keys to the file.
    enum class Defaults { WriteBack, KeepOut };

    SettingReader(const QString &path, Defaults defaults);

    // The file as read by the constructor.
    const Profile &profile() const { return m_profile; }

    // Removes all keys in a section; save() applies this to the file.
    void clear(const QString &section);

    // Reads the file again and adds the missing keys to it. Does nothing with Defaults::KeepOut, or if the file is
    // rejected either time it is read.
    void save();

    QString text(const SettingKey &key);

    template <typename Value, typename Convert>
    void number(Value &value, const SettingKey &key, Convert convert)
    {
        const QString found = text(key);
        value = convert(QString::fromLatin1(key.fallback));
        converting(key, [&] { value = convert(found); });
    }
    void read(std::int16_t &value, const SettingKey &key);
    void read(std::int32_t &value, const SettingKey &key);
    // Real numbers may use either decimal separator.
    void read(float &value, const SettingKey &key);
    void read(double &value, const SettingKey &key);
    void read(bool &value, const SettingKey &key);
    void read(QString &value, const SettingKey &key) { value = text(key); }
    // Uses `none` if the value is invalid, because the default would select a device that the user did not intend.
    void int16OrNone(std::int16_t &value, const SettingKey &key, std::int16_t none);

    // Returns one error message for each invalid value.
    const QStringList &faults() const { return m_faults; }
    void addFault(const SettingKey &key, const QString &what);
    void addFaults(const QStringList &sentences) { m_faults += sentences; }

    // Returns true if the value of this key was invalid.
    bool isUnreadable(const QString &section, const QString &key) const
    {
        return m_unreadable.contains({section, key});
    }

private:
    void converting(const SettingKey &key, const std::function<void()> &conversion);

    QString m_path;
    Profile m_profile;
    Defaults m_defaults;
    QVector<ProfileEntry> m_missing; // with their defaults
    QStringList m_cleared;           // sections
    QStringList m_faults;
    QSet<std::pair<QString, QString>> m_unreadable; // section and key
};

} // namespace calvorn
