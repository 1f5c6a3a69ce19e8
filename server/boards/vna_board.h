// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/dds_chip_model.h"
#include "server/boards/detector_model.h"
#include "server/boards/serial_board.h"
#include "server/boards/simulator_settings.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace calvorn {

// One sample as the board made it.
struct VnaBoardSample
{
    std::uint32_t word; // tuning word in the generator
    double hertz;       // what the generator made of it; 0: off
    int phase;          // counts as sent
    int magnitude;
};

// The MiniVNA of docs/hardware/minivna.md: it reads four numbers and sends four bytes for each sample. The device
// under test hangs between DUT and DET; in reflection what it does not pass comes back to the bridge.
//
// Where the instrument's behaviour is not known, the board is chosen to be the strict one: bytes that come while it
// replies are lost, a byte that is neither a digit nor a carriage return voids the command begun, and the generator
// stays on the last frequency when a sweep has ended.
class VnaBoard : public SerialBoard
{
public:
    // settings.clockHz: the generator's system clock. settings.fault: only Refuse concerns the board itself.
    explicit VnaBoard(const SimulatorSettings &settings);

    void receive(std::uint8_t byte) override;
    std::optional<std::uint8_t> nextByte() override;

    // Bytes of a reply are still to come, and what the host says is lost.
    bool isReplying() const { return m_samplesDue > 0 || m_position < m_bytes.size(); }

protected:
    // A sample has been measured, at what the generator makes from now on; a derived board may put a probe here.
    virtual void sampled(const VnaBoardSample & /*sample*/) {}

private:
    void endNumber();
    void forgetCommand();
    void execute();
    void measure();

    SimulatorSettings m_settings;
    DetectorModel m_phaseDetector;
    DetectorModel m_levelDetector;
    DetectorModel::Time m_now{};

    std::array<std::uint32_t, 4> m_numbers{}; // path, start, samples, step
    std::size_t m_numberCount = 0;
    std::uint64_t m_number = 0;
    int m_digits = 0;

    bool m_transmission = false;
    std::uint32_t m_word = 0;
    std::uint32_t m_step = 0;
    std::uint32_t m_samplesDue = 0;
    std::array<std::uint8_t, 4> m_bytes{};
    std::size_t m_position = m_bytes.size();
};

} // namespace calvorn
