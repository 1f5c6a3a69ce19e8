// SPDX-License-Identifier: MIT
#include "server/drivers/parallel_opener.h"

#include "platform/lpt_wiring_parser.h"
#include "platform/profile_file.h"
#include "server/boards/simulated_parallel_port.h"
#include "server/links/ppdev_port.h"

namespace calvorn {

OpenedPort ParallelOpener::open(int address)
{
    const BoardWiring wiring = parseBoardWiring(
        [this](const QString &key) { return readProfileString(m_settingsPath, QStringLiteral("LPT Wiring"), key); });
    if (address == kSimulatedLptAddress)
        return openSimulated(wiring);
    return {PpdevPort::open(address), wiring};
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
