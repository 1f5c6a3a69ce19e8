// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/port_error.h"

#include <chrono>
#include <cstdint>

namespace calvorn {

// The three registers of a PC parallel port, at base+0, +2 and +1, as raw bits. Between bit and pin the hardware
// inverts STROBE, AUTOFD and SELECT-IN of the control register and BUSY of the status register; this class does not
// compensate for that. Used by one thread at a time. Every access may throw PortError.
class ParallelPort
{
public:
    virtual ~ParallelPort() = default;

    virtual void writeData(std::uint8_t value) = 0;
    virtual void writeControl(std::uint8_t value) = 0;
    virtual std::uint8_t readStatus() = 0;

    // Throws PortError when the hardware behind the port has gone. Some systems accept writes to such a port and answer
    // reads with 0, so data read since the last call is valid only if this call returns.
    virtual void confirmPresent() = 0;

    // Waits until at least this much time has passed on the board.
    virtual void wait(std::chrono::nanoseconds duration) = 0;
};

} // namespace calvorn
