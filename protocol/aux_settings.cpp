// SPDX-License-Identifier: MIT
#include "protocol/aux_settings.h"

#include "platform/profile_file.h"

#include <QLocale>

#include <algorithm>

namespace calvorn {

namespace {

// "&H" and hexadecimal digits, or a number with either decimal separator, because the file may come from another
// country; 0 for any other text.
double numberIn(const QString &path, const QString &section, const char *key)
{
    QString text = readProfileString(path, section, QString::fromLatin1(key)).trimmed();
    if (text.startsWith(u"&H", Qt::CaseInsensitive))
        return text.sliced(2).toInt(nullptr, 16);
    return QLocale::c().toDouble(text.replace(u',', u'.'));
}

std::uint8_t byteIn(const QString &path, const char *key)
{
    return static_cast<std::uint8_t>(std::clamp(numberIn(path, QStringLiteral("Aux2"), key), 0.0, 255.0));
}

} // namespace

AuxSettings readAuxSettings(const QString &path, int output)
{
    const QString section = QStringLiteral("Aux%1").arg(output);
    const QString inverse = readProfileString(path, section, QStringLiteral("Inverse Logic")).trimmed();
    return {numberIn(path, section, "Enabled") > 0.0,
            inverse.compare(u"True", Qt::CaseInsensitive) == 0 || numberIn(path, section, "Inverse Logic") != 0.0};
}

std::optional<PotSettings> readPotSettings(const QString &path)
{
    for (const char *key : {"PotMin", "PotMax"})
        if (readProfileString(path, QStringLiteral("Aux2"), QString::fromLatin1(key)).isEmpty())
            return std::nullopt;
    const auto [low, high] = std::minmax({byteIn(path, "PotMin"), byteIn(path, "PotMax")});
    return PotSettings{low, high, byteIn(path, "i2c_control"), byteIn(path, "i2c_command")};
}

std::uint8_t firstAuxByte(const QString &path, int output)
{
    const AuxSettings settings = readAuxSettings(path, output);
    const char *const key = output == 1 ? "Aux_1" : "Aux_2";
    return settings.byteFor(settings.enabled ? static_cast<int>(numberIn(path, QStringLiteral("Calvorn"), key)) : 0);
}

} // namespace calvorn
