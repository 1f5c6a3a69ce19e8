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

// Reads the settings file once and takes values from it, each with a default for a key that is missing or empty.
//
// A text that does not convert is a run-time error of that key alone: the value becomes its default, the bad text
// stays in the file, and faults() names section, key and text.
class SettingReader
{
public:
    // What happens to a default that was used because there was nothing: it goes into the file with save(), or not.
    enum class Defaults { WriteBack, KeepOut };

    SettingReader(const QString &path, Defaults defaults);

    // The file as it was read.
    const Profile &profile() const { return m_profile; }

    // Removes the keys of a section from the file with save().
    void clear(const QString &section);

    // Brings what is missing into the file as it is by then. Nothing with Defaults::KeepOut, and when the file was
    // refused, now or then.
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
    // Reals pass the decimal-separator normaliser.
    void read(float &value, const SettingKey &key);
    void read(double &value, const SettingKey &key);
    void read(bool &value, const SettingKey &key);
    void read(QString &value, const SettingKey &key) { value = text(key); }
    // Of a text that does not convert this value is made in place of the default, because the default would be another
    // device than the one that was meant.
    void int16OrNone(std::int16_t &value, const SettingKey &key, std::int16_t none);

    // One sentence for each text that could not be used.
    const QStringList &faults() const { return m_faults; }
    void addFault(const SettingKey &key, const QString &what);
    void addFaults(const QStringList &sentences) { m_faults += sentences; }

    // Whether the text of this key could not be used.
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
