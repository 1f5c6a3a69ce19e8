// SPDX-License-Identifier: MIT
#include "platform/serial_ports.h"

#include "platform/profile_file.h"

#include <QFileInfo>

#include <array>
#include <cstddef>

namespace calvorn {

namespace {

constexpr int kPortsOfAKind = 4;
constexpr std::array kKinds = {"/dev/ttyS", "/dev/ttyUSB", "/dev/ttyACM"};

} // namespace

QString serialDeviceOf(int number, const QString &settingsPath)
{
    if (number == kSimulatedComPort)
        return {};
    QString named =
        readProfileString(settingsPath, QStringLiteral("Ports"), QStringLiteral("COM%1").arg(number)).trimmed();
    if (!named.isEmpty())
        return named;
    const int index = number - 1;
    if (index < 0 || index >= kPortsOfAKind * static_cast<int>(kKinds.size()))
        return {};
    const char *kind = kKinds.at(static_cast<std::size_t>(index / kPortsOfAKind));
    return QString::fromLatin1(kind) + QString::number(index % kPortsOfAKind);
}

bool comPortExists(int number, const QString &settingsPath)
{
    if (number == kSimulatedComPort)
        return true;
    const QString device = serialDeviceOf(number, settingsPath);
    return !device.isEmpty() && QFileInfo::exists(device);
}

} // namespace calvorn
