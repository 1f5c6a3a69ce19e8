// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>

namespace calvorn {

// Returns whether the desktop uses Wayland, under which only the compositor moves windows.
inline bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace calvorn
