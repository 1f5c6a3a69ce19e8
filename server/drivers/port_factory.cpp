// SPDX-License-Identifier: MIT
#include "server/drivers/port_factory.h"

#include "platform/profile_file.h"
#include "server/boards/simulated_parallel_port.h"
#include "platform/lpt_wiring_parser.h"
#include "server/links/ppdev_port.h"

#include <atomic>

namespace calvorn {

namespace {

OpenedPort openSimulatedPort(const QString &settingsPath, const BoardWiring &wiring)
{
    static std::atomic<bool> unplugged = false; // set by the thread that sweeps
    SimulatorSettings settings = readSimulatorSettings(settingsPath);
    if (settings.fault == SimulatorFault::Unplug && unplugged)
        settings.fault = SimulatorFault::None;
    auto port = std::make_unique<SimulatedParallelPort>(settings, wiring);
    port->onUnplugged([] { unplugged = true; });
    return {std::move(port), wiring};
}

} // namespace

OpenedPort openParallelPort(int address, const QString &settingsPath)
{
    const BoardWiring wiring = parseBoardWiring([&settingsPath](const QString &key) {
        return readProfileString(settingsPath, QStringLiteral("LPT Wiring"), key);
    });
    if (address == kSimulatedLptAddress)
        return openSimulatedPort(settingsPath, wiring);
    return {PpdevPort::open(address), wiring};
}

} // namespace calvorn
