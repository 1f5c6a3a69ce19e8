// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/parallel_port.h"

#include <QString>

#include <memory>

namespace calvorn {

inline constexpr int kSimulatedLptAddress = 0;

// Opens the parallel port at this base address; address 0 is the simulated board, as [Simulator] of the settings
// file describes it at this moment. Throws PortError when there is no such port.
std::unique_ptr<ParallelPort> openParallelPort(int address, const QString &settingsPath);

} // namespace calvorn
