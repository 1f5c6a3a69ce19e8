// SPDX-License-Identifier: MIT
#include "server/links/line_settings.h"

#include <QCoreApplication>
#include <QStringList>

#include <stdexcept>

namespace calvorn {

namespace {

constexpr int kHighestBaud = 4'000'000;

bool takeBaud(const QString &text, LineSettings &settings)
{
    bool isNumber = false;
    settings.baud = text.toInt(&isNumber);
    return isNumber && text.at(0).isDigit() && settings.baud >= 1 && settings.baud <= kHighestBaud;
}

bool takeParity(const QString &text, LineSettings &settings)
{
    const qsizetype index = text.size() == 1 ? QStringLiteral("NEOMS").indexOf(text) : -1;
    if (index < 0)
        return false;
    settings.parity = static_cast<LineParity>(index);
    return true;
}

bool takeDataBits(const QString &text, LineSettings &settings)
{
    settings.dataBits = text.size() == 1 ? text.at(0).unicode() - '0' : 0;
    return settings.dataBits >= 5 && settings.dataBits <= 8;
}

bool takeStopBits(const QString &text, LineSettings &settings)
{
    const qsizetype index = QStringList{"1", "1.5", "2"}.indexOf(text);
    if (index < 0)
        return false;
    settings.stop = static_cast<LineStop>(index);
    return true;
}

} // namespace

LineSettings parseLineSettings(const QString &text)
{
    QStringList parts = text.toUpper().split(QLatin1Char(','));
    for (QString &part : parts)
        part.remove(QLatin1Char(' '));
    LineSettings settings;
    if (parts.size() != 4 || parts.contains(QString()) || !takeBaud(parts[0], settings) ||
        !takeParity(parts[1], settings) || !takeDataBits(parts[2], settings) || !takeStopBits(parts[3], settings))
        throw std::runtime_error(
            QCoreApplication::translate("SerialPort", "\"%1\" does not describe a serial line; it should look like "
                                                      "115200,N,8,1.")
                .arg(text)
                .toStdString());
    return settings;
}

} // namespace calvorn
