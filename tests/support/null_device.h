// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace calvorn::test {

// Returns a device that discards its input. Creates a separate device for root, who could replace /dev/null.
inline QString nullDevice(const QString &folder)
{
    const QString own = folder + QStringLiteral("/null");
    const bool made = mknod(own.toLocal8Bit().constData(), S_IFCHR | 0600, makedev(1, 3)) == 0;
    return made ? own : QStringLiteral("/dev/null");
}

} // namespace calvorn::test
