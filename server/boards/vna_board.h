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

// A sample and the values from which it was computed.
struct VnaBoardSample
{
    std::uint32_t word; // tuning word of the generator
    double hertz;       // output frequency of the generator; 0: off
    int phase;          // the count sent to the host
    int magnitude;
};

// The MiniVNA described in docs/hardware/minivna.md: reads four numbers and sends four bytes per sample. The device
// under test is connected between DUT and DET; in reflection mode, the part of the signal that does not pass through it
// returns to the bridge.
//
// Where the instrument's behaviour is unknown, this board implements the strictest possibility: it loses bytes received
// during a reply, discards the current command on any byte other than a digit or a carriage return, and keeps
// generating the last frequency after a sweep.
class VnaBoard : public SerialBoard
{
public:
    // settings.clockHz: the generator's system clock. settings.fault: the board itself supports only Refuse.
    explicit VnaBoard(const SimulatorSettings &settings);

    void receive(std::uint8_t byte) override;
    std::optional<std::uint8_t> nextByte() override;

    // Returns true while a reply is being sent; bytes received from the host are then lost.
    bool isReplying() const { return m_samplesDue > 0 || m_position < m_bytes.size(); }

protected:
    // Called with each measured sample, which includes the generator's current output. Tests override it to observe
    // both.
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
