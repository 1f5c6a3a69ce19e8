// SPDX-License-Identifier: MIT
#include "protocol/aux_settings.h"

#include <QLocale>

#include <algorithm>

namespace calvorn {

namespace {

// Accepts "&H" with hexadecimal digits, or a number with either decimal separator because the file may come from
// another locale. Returns 0 for anything else.
double numberIn(const QString &path, const SettingKey &key)
{
    QString text = readTextOrDefault(path, key).trimmed();
    if (text.startsWith(u"&H", Qt::CaseInsensitive))
        return text.sliced(2).toInt(nullptr, 16);
    return QLocale::c().toDouble(text.replace(u',', u'.'));
}

std::uint8_t byteIn(const QString &path, const SettingKey &key)
{
    return static_cast<std::uint8_t>(std::clamp(numberIn(path, key), 0.0, 255.0));
}

const AuxKeys &keysOf(int output)
{
    return kAuxKeys[static_cast<std::size_t>(output - 1)];
}

} // namespace

AuxSettings readAuxSettings(const QString &path, int output)
{
    const AuxKeys &keys = keysOf(output);
    const QString inverse = readText(path, keys.inverse).trimmed();
    return {numberIn(path, keys.enabled) > 0.0,
            inverse.compare(u"True", Qt::CaseInsensitive) == 0 || numberIn(path, keys.inverse) != 0.0};
}

std::optional<PotSettings> readPotSettings(const QString &path)
{
    for (const SettingKey &key : {kPotMin, kPotMax})
        if (readText(path, key).isEmpty())
            return std::nullopt;
    const auto [low, high] = std::minmax({byteIn(path, kPotMin), byteIn(path, kPotMax)});
    return PotSettings{low, high, byteIn(path, kI2cControl), byteIn(path, kI2cCommand)};
}

std::uint8_t firstAuxByte(const QString &path, int output)
{
    const AuxSettings settings = readAuxSettings(path, output);
    return settings.byteFor(settings.enabled ? static_cast<int>(numberIn(path, keysOf(output).value)) : 0);
}

} // namespace calvorn
