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

// Sets and reads lines by name. Keeps a copy of what was last written to the two output registers, so that a line
// changes alone; several lines of one register change in the same write.
class ParallelPins
{
public:
    // The port must outlive this object. Nothing is written before the first set().
    explicit ParallelPins(ParallelPort &port, const LptWiring &wiring = kStandardLptWiring);

    // One write for each register that has a line in the list, data register first.
    void set(std::initializer_list<LineLevel> levels);

    // Puts a byte on D0..D7; whatever shares them takes the level of its bit.
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
