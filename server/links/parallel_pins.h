// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/lpt_wiring.h"
#include "server/links/parallel_port.h"

#include <initializer_list>

namespace calvorn {

struct LineLevel
{
    LptLine line;
    bool high;
};

// Sets and reads lines by name. Stores a copy of the two output registers, so that a line can be changed without
// affecting the others; a single write can change several lines in one register.
class ParallelPins
{
public:
    // The port must outlive this object. Nothing is written before the first set() or setBus().
    explicit ParallelPins(ParallelPort &port, const LptWiring &wiring = kStandardLptWiring);

    // Writes each register that contains a line in the list once, data register first.
    void set(std::initializer_list<LineLevel> levels);

    // Writes a byte to D0..D7; every line wired to one of these pins is set to the level of its bit.
    void setBus(std::uint8_t value);

    bool read(LptLine line);

    void wait(std::chrono::nanoseconds duration) { m_port.wait(duration); }

private:
    const LineWiring &wiringOf(LptLine line) const { return m_wiring[static_cast<std::size_t>(line)]; }

    ParallelPort &m_port;
    LptWiring m_wiring;
    std::uint8_t m_data = 0;
    std::uint8_t m_control = 0;
};

} // namespace calvorn
