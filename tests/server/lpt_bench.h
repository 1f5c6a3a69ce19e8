// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/simulated_parallel_port.h"
#include "server/drivers/lpt_driver.h"
#include "tests/server/error_count.h"

#include <QSignalSpy>

#include <vector>

namespace calvorn {

inline SimulatorSettings unpacedSettings()
{
    SimulatorSettings settings;
    settings.paced = false;
    return settings;
}

// One conversion by the detector's A/D converter.
struct ConversionRecord
{
    double hertz; // the generator's output at the time of sampling
    int count;
};

// A simulated board that counts accesses to its bus and records its conversions.
class ProbedPort : public SimulatedParallelPort
{
public:
    using SimulatedParallelPort::SimulatedParallelPort;

    void writeData(std::uint8_t value) override
    {
        ++m_accesses;
        SimulatedParallelPort::writeData(value);
        look();
    }

    void writeControl(std::uint8_t value) override
    {
        ++m_accesses;
        SimulatedParallelPort::writeControl(value);
        look();
    }

    std::uint8_t readStatus() override
    {
        ++m_accesses;
        return SimulatedParallelPort::readStatus();
    }

    std::uint64_t accesses() const { return m_accesses; }

    // Discards the records, then records the next `atMost` conversions.
    void recordConversions(std::size_t atMost)
    {
        m_recordAtMost = atMost;
        m_records.clear();
        m_records.reserve(atMost);
    }
    const std::vector<ConversionRecord> &conversions() const { return m_records; }

private:
    void look()
    {
        if (adc().conversions() == m_seen)
            return;
        m_seen = adc().conversions();
        if (m_records.size() < m_recordAtMost)
            m_records.push_back({dds().output().hertz, adc().latestCount()});
    }

    std::uint64_t m_accesses = 0;
    std::uint64_t m_seen = 0;
    std::size_t m_recordAtMost = 0;
    std::vector<ConversionRecord> m_records;
};

// The driver, its signals, and a simulated board at address 0.
struct LptBench
{
    static constexpr int kPoints = 400;
    static constexpr int kWindow = 8; // the maximum number of unacknowledged vectors

    explicit LptBench(const SimulatorSettings &made = unpacedSettings())
        : settings(made)
    {
    }

    // Acknowledges every vector, as the program does.
    void takeVectors()
    {
        QObject::connect(
            &driver, &LptDriver::aVettore, &driver, [this] { driver.VectorsTaken(1); }, Qt::QueuedConnection);
    }

    QList<int> vector(int index) { return vectors.at(index).at(0).value<QList<int>>(); }
    int errorCode(int index) { return errors.at(index).at(0).toInt(); }

    SimulatorSettings settings;
    BoardWiring wiring;
    ProbedPort *board = nullptr; // valid while the port is open
    std::size_t recordAtMost = 0;
    LptDriver driver{[this](int address) -> OpenedPort {
        if (address != 0)
            throw PortError("No such port.");
        auto port = std::make_unique<ProbedPort>(settings, wiring);
        board = port.get();
        board->recordConversions(recordAtMost);
        return {std::move(port), wiring};
    }};
    QSignalSpy vectors{&driver, &LptDriver::aVettore};
    QSignalSpy errors{&driver, &LptDriver::aErrore};
    QSignalSpy completes{&driver, &LptDriver::aComplete};
};

} // namespace calvorn
