// SPDX-License-Identifier: MIT
#include "server/drivers/parallel_opener.h"

#include "protocol/aux_settings.h"
#include "protocol/lpt_wiring_parser.h"
#include "server/boards/simulated_parallel_port.h"
#include "server/links/ppdev_port.h"

namespace calvorn {

OpenedPort ParallelOpener::open(int address)
{
    const BoardWiring wiring = readBoardWiring(m_settingsPath);
    OpenedPort opened =
        address == kSimulatedLptAddress ? openSimulated(wiring) : OpenedPort(PpdevPort::open(address), wiring);
    opened.outputs = {firstAuxByte(m_settingsPath, 1), firstAuxByte(m_settingsPath, 2)};
    return opened;
}

OpenedPort ParallelOpener::openSimulated(const BoardWiring &wiring)
{
    SimulatorSettings settings = readSimulatorSettings(m_settingsPath);
    if (settings.fault == SimulatorFault::Unplug && m_unplugged)
        settings.fault = SimulatorFault::None;
    auto port = std::make_unique<SimulatedParallelPort>(settings, wiring);
    port->onUnplugged([this] { m_unplugged = true; });
    return {std::move(port), wiring};
}

} // namespace calvorn
