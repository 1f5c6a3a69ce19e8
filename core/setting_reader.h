// SPDX-License-Identifier: MIT
#pragma once

#include "core/number_text.h"
#include "platform/profile_file.h"

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

    QString text(const char *section, const char *key, const QString &fallback);
    QString text(const char *section, const char *key, const char *fallback)
    {
        return text(section, key, QString::fromLatin1(fallback));
    }

    template <typename Value, typename Convert>
    void number(Value &value, const char *section, const char *key, const char *fallback, Convert convert)
    {
        const QString read = text(section, key, fallback);
        value = convert(QString::fromLatin1(fallback));
        converting(section, key, fallback, [&] { value = convert(read); });
    }
    void int16(std::int16_t &value, const char *section, const char *key, const char *fallback);
    // Of a text that does not convert this value is made in place of the default, because the default would be another
    // device than the one that was meant.
    void int16OrNone(std::int16_t &value, const char *section, const char *key, const char *fallback,
                     std::int16_t none);
    void int32(std::int32_t &value, const char *section, const char *key, const char *fallback);
    // Reals pass the decimal-separator normaliser.
    void single(float &value, const char *section, const char *key, const char *fallback);
    void real(double &value, const char *section, const char *key, const char *fallback);
    void boolean(bool &value, const char *section, const char *key, const char *fallback);

    // One sentence for each text that could not be used.
    const QStringList &faults() const { return m_faults; }
    void addFault(const char *section, const char *key, const QString &what, const char *fallback);

    // Whether the text of this key could not be used.
    bool isUnreadable(const QString &section, const QString &key) const
    {
        return m_unreadable.contains({section, key});
    }

private:
    void converting(const char *section, const char *key, const char *fallback,
                    const std::function<void()> &conversion);

    QString m_path;
    Profile m_profile;
    Defaults m_defaults;
    QVector<ProfileEntry> m_missing; // with their defaults
    QStringList m_cleared;           // sections
    QStringList m_faults;
    QSet<std::pair<QString, QString>> m_unreadable; // section and key
};

} // namespace calvorn
