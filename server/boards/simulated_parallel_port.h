// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/lpt_wiring.h"
#include "server/boards/board_pace.h"
#include "server/boards/dds_chip_model.h"
#include "server/boards/detector_model.h"
#include "server/boards/i2c_pot_model.h"
#include "server/boards/serial_adc_model.h"
#include "server/boards/shift_latch_model.h"
#include "server/boards/simulator_settings.h"
#include "server/links/parallel_port.h"

#include <array>
#include <functional>
#include <memory>

namespace calvorn {

// A parallel port connected to the generator and detector board described in docs/hardware/lpt-board.md. The model uses
// only the pin levels and decodes them as the chips do. Must be used by only one thread at a time.
//
// Supports these faults: refuse (the constructor throws PortError), silence and half (the converter's data line stays
// low after two sweeps, or from the middle of the first), unplug (every access throws PortError from the middle of the
// second sweep on) and drop (every 997th clock edge does not reach the generator).
class SimulatedParallelPort : public ParallelPort
{
public:
    explicit SimulatedParallelPort(const SimulatorSettings &settings, const BoardWiring &wiring = {});

    // Sets a callback that is called once, in the thread that uses the port, when the "unplug" fault removes the
    // port.
    void onUnplugged(std::function<void()> callback) { m_onUnplugged = std::move(callback); }

    void writeData(std::uint8_t value) override;
    void writeControl(std::uint8_t value) override;
    std::uint8_t readStatus() override;
    void confirmPresent() override {} // every access to a missing port throws
    void wait(std::chrono::nanoseconds duration) override;

    // The chips on the board, for tests that check their pins.
    const DdsChipModel &dds() const { return *m_dds; }
    const SerialAdcModel &adc() const { return m_adc; }
    const ShiftLatchModel &latches() const { return m_latches; }
    const I2cPotModel &pot() const { return m_pot; }

    // The board's own clock: 1.25 us for each register access, plus all waits. Without pacing, it runs faster than real
    // time.
    std::chrono::nanoseconds boardTime() const { return m_pace.now(); }

private:
    using Levels = std::uint16_t; // one bit for each LptLine
    using LevelTable = std::array<Levels, 256>;

    static LevelTable levelTable(const LptWiring &lines, PortRegister portRegister);

    void access();
    void drive();
    void driveDds();
    void driveAdc();
    bool loseClockEdge(bool clock);
    Levels levelsOf(std::uint8_t data, std::uint8_t control) const
    {
        return static_cast<Levels>(m_levelsOfData[data] | m_levelsOfControl[control]);
    }
    bool level(LptLine line) const { return (m_levels >> static_cast<unsigned>(line) & 1U) != 0; }

    SimulatorSettings m_settings;
    BoardWiring m_wiring;
    LevelTable m_levelsOfData; // the levels of this register's lines for each register value
    LevelTable m_levelsOfControl;
    Levels m_levels; // the current line levels
    BoardPace m_pace;
    std::unique_ptr<DdsChipModel> m_dds;
    DetectorModel m_detector;
    SerialAdcModel m_adc;
    ShiftLatchModel m_latches;
    I2cPotModel m_pot;
    std::uint8_t m_data = 0;
    std::uint8_t m_control = 0;
    std::uint64_t m_updatesSeen = 0;
    std::uint64_t m_clockEdges = 0;
    bool m_clockWas = false;
    bool m_edgeLost = false;
    bool m_unplugged = false;
    std::function<void()> m_onUnplugged;
};

} // namespace calvorn
