// SPDX-License-Identifier: MIT
#include "server/drivers/port_factory.h"

#include "server/boards/simulated_parallel_port.h"

#include <string>

namespace calvorn {

std::unique_ptr<ParallelPort> openParallelPort(int address, const QString &settingsPath)
{
    if (address == kSimulatedLptAddress)
        return std::make_unique<SimulatedParallelPort>(readSimulatorSettings(settingsPath));
    throw PortError("There is no parallel port at the address " + std::to_string(address) + ".");
}

} // namespace calvorn
