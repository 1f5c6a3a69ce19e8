// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>

namespace calvorn {

// Returns whether the desktop uses Wayland, where only the compositor can move windows.
inline bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace calvorn
