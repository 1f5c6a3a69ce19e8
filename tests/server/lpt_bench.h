// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/simulated_parallel_port.h"
#include "server/drivers/lpt_driver.h"

#include <QSignalSpy>

namespace calvorn {

inline SimulatorSettings unpacedSettings()
{
    SimulatorSettings settings;
    settings.paced = false;
    return settings;
}

// The driver with a simulated board of this make behind address 0, and its signals.
struct LptBench
{
    explicit LptBench(const SimulatorSettings &made = unpacedSettings())
        : settings(made)
    {
    }

    // Takes every vector as the program does.
    void takeVectors()
    {
        QObject::connect(
            &driver, &LptDriver::aVettore, &driver, [this] { driver.VectorsTaken(1); }, Qt::QueuedConnection);
    }

    QList<int> vector(int index) { return vectors.at(index).at(0).value<QList<int>>(); }
    int errorCode(int index) { return errors.at(index).at(0).toInt(); }

    SimulatorSettings settings;
    BoardWiring wiring;
    SimulatedParallelPort *board = nullptr; // while the port is open
    std::size_t recordAtMost = 0;
    LptDriver driver{[this](int address) -> OpenedPort {
        if (address != 0)
            throw PortError("No such port.");
        auto port = std::make_unique<SimulatedParallelPort>(settings, wiring);
        board = port.get();
        board->recordConversions(recordAtMost);
        return {std::move(port), wiring};
    }};
    QSignalSpy vectors{&driver, &LptDriver::aVettore};
    QSignalSpy errors{&driver, &LptDriver::aErrore};
    QSignalSpy completes{&driver, &LptDriver::aComplete};
};

} // namespace calvorn
