// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/board_pace.h"
#include "server/boards/dds_chip_model.h"
#include "server/boards/detector_model.h"
#include "server/boards/i2c_pot_model.h"
#include "server/boards/serial_adc_model.h"
#include "server/boards/shift_latch_model.h"
#include "server/boards/simulator_settings.h"
#include "server/links/parallel_port.h"

#include <memory>
#include <vector>

namespace calvorn {

// One conversion of the board's detector.
struct ConversionRecord
{
    double hertz; // what the generator made at the instant of hold
    int count;
};

// The generator and detector board of docs/hardware/lpt-board.md behind a parallel port. It sees nothing but the
// levels of the pins, and decodes them as the chips do. Used by one thread at a time; the accessors are for tests.
class SimulatedParallelPort : public ParallelPort
{
public:
    explicit SimulatedParallelPort(const SimulatorSettings &settings);

    void writeData(std::uint8_t value) override;
    void writeControl(std::uint8_t value) override;
    std::uint8_t readStatus() override;
    void wait(std::chrono::nanoseconds duration) override;

    const DdsChipModel &dds() const { return *m_dds; }
    const SerialAdcModel &adc() const { return m_adc; }
    const ShiftLatchModel &latches() const { return m_latches; }
    const I2cPotModel &pot() const { return m_pot; }
    std::chrono::nanoseconds boardTime() const { return m_pace.now(); }
    std::uint64_t accesses() const { return m_accesses; }

    // Keeps a record of every conversion from now on, at most this many. 0 ends it.
    void recordConversions(std::size_t atMost);
    const std::vector<ConversionRecord> &conversions() const { return m_records; }

private:
    void access();
    void driveDds(std::uint8_t pins);
    void driveAdc(std::uint8_t pins);

    SimulatorSettings m_settings;
    BoardPace m_pace;
    std::unique_ptr<DdsChipModel> m_dds;
    DetectorModel m_detector;
    SerialAdcModel m_adc;
    ShiftLatchModel m_latches;
    I2cPotModel m_pot;
    std::uint8_t m_dataPins = 0;
    std::uint64_t m_updatesSeen = 0;
    std::uint64_t m_accesses = 0;
    std::size_t m_recordAtMost = 0;
    std::vector<ConversionRecord> m_records;
};

} // namespace calvorn
