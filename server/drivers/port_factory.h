// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/opened_port.h"

#include <QString>

namespace calvorn {

inline constexpr int kSimulatedLptAddress = 0;

// Opens the parallel port at this base address; address 0 is the simulated board, as [Simulator] of the settings
// file describes it at this moment. [LPT Wiring] tells how the board is wired, and the simulated one follows it.
// Throws PortError when there is no such port, or a value of [LPT Wiring] makes no sense. The simulated fault
// "unplug" happens once in the life of the server. Main thread only.
OpenedPort openParallelPort(int address, const QString &settingsPath);

} // namespace calvorn
