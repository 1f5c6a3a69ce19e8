// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// Two chained 74HC595 registers: serial data is shifted into the Aux1 chip, whose serial output feeds the Aux2 chip.
class ShiftLatchModel
{
public:
    // Sets the pin levels; clock and latch act on their rising edges.
    void drive(bool data, bool clock, bool latch);

    // Return the levels of the output pins; bit 0 is Q0.
    std::uint8_t aux1() const { return static_cast<std::uint8_t>(m_outputs); }
    std::uint8_t aux2() const { return static_cast<std::uint8_t>(m_outputs >> 8); }
    // Number of rising edges on the two lines since the model was created.
    std::uint64_t latches() const { return m_latches; }
    std::uint64_t clocks() const { return m_clocks; }

private:
    std::uint16_t m_shift = 0;
    std::uint16_t m_outputs = 0;
    bool m_clock = false;
    bool m_latch = false;
    std::uint64_t m_latches = 0;
    std::uint64_t m_clocks = 0;
};

} // namespace calvorn
