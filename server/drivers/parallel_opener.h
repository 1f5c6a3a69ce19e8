// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/simulator_keys.h"
#include "server/links/opened_port.h"

#include <QString>

#include <atomic>
#include <utility>

namespace calvorn {

// Opens the port that belongs to an address. Must outlive the ports that it has opened.
class ParallelOpener
{
public:
    explicit ParallelOpener(QString settingsPath)
        : m_settingsPath(std::move(settingsPath))
    {
    }

    // Opens the parallel port at this base address; at kSimulatedLptAddress, opens a simulated board with the current
    // values of [Simulator] in the settings file. [LPT Wiring] describes the wiring of the board, real or simulated.
    // Throws PortError when there is no such port, or when a value of [LPT Wiring] makes no sense. The simulated fault
    // "unplug" happens only once in the lifetime of this object. Main thread only.
    OpenedPort open(int address);

private:
    OpenedPort openSimulated(const BoardWiring &wiring);

    QString m_settingsPath;
    std::atomic<bool> m_unplugged = false; // set by the sweeping thread
};

} // namespace calvorn
