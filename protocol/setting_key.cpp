// SPDX-License-Identifier: MIT
#include "protocol/setting_key.h"

#include "platform/profile_file.h"

namespace calvorn {

QString readText(const QString &path, const SettingKey &key)
{
    return readProfileString(path, QString::fromLatin1(key.section), QString::fromLatin1(key.name));
}

QString readTextOrDefault(const QString &path, const SettingKey &key)
{
    const QString text = readText(path, key);
    return text.isEmpty() ? QString::fromLatin1(key.fallback) : text;
}

} // namespace calvorn
