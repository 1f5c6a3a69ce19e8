// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/simulator_keys.h"
#include "server/links/opened_port.h"

#include <QString>

#include <atomic>
#include <utility>

namespace calvorn {

// Decides which port an address means. Lives as long as the server, and longer than the ports that it has opened.
class ParallelOpener
{
public:
    explicit ParallelOpener(QString settingsPath)
        : m_settingsPath(std::move(settingsPath))
    {
    }

    // Opens the parallel port at this base address; kSimulatedLptAddress is the simulated board, as [Simulator] of the
    // settings file describes it at this moment. [LPT Wiring] tells how the board is wired, and the simulated one
    // follows it. Throws PortError when there is no such port, or a value of [LPT Wiring] makes no sense. The simulated
    // fault "unplug" happens once in the life of this object. Main thread only.
    OpenedPort open(int address);

private:
    OpenedPort openSimulated(const BoardWiring &wiring);

    QString m_settingsPath;
    std::atomic<bool> m_unplugged = false; // set by the thread that sweeps
};

} // namespace calvorn
