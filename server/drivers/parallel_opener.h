// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/simulator_keys.h"
#include "server/links/opened_port.h"

#include <QString>

#include <atomic>
#include <utility>

namespace calvorn {

// Opens the port at a given address. Must outlive the ports that it has opened.
class ParallelOpener
{
public:
    explicit ParallelOpener(QString settingsPath)
        : m_settingsPath(std::move(settingsPath))
    {
    }

    // Opens the parallel port at this base address or, for kSimulatedLptAddress, a simulated board with the current
    // values from [Simulator] in the settings file. [LPT Wiring] describes the wiring of the real or simulated board.
    // Throws PortError if there is no such port or if a value in [LPT Wiring] is invalid. The simulated "unplug" fault
    // occurs only once in the lifetime of this object. Main thread only.
    OpenedPort open(int address);

private:
    OpenedPort openSimulated(const BoardWiring &wiring);

    QString m_settingsPath;
    std::atomic<bool> m_unplugged = false; // set by the sweep thread
};

} // namespace calvorn
