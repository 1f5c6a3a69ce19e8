// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/port_error.h"

#include <chrono>
#include <cstdint>

namespace calvorn {

// The three registers of a PC parallel port, as they stand at base+0, +2 and +1: raw bits. The hardware inverts
// STROBE, AUTOFD and SELECT-IN of the control register and BUSY of the status register between bit and pin, and
// nothing here undoes it. Used by one thread at a time. Every access may throw PortError.
class ParallelPort
{
public:
    virtual ~ParallelPort() = default;

    virtual void writeData(std::uint8_t value) = 0;
    virtual void writeControl(std::uint8_t value) = 0;
    virtual std::uint8_t readStatus() = 0;

    // Throws PortError when the hardware behind the port has gone. Some systems let writes to such a port succeed and
    // answer reads with 0, so what was read since the last call is good only when this returns.
    virtual void confirmPresent() = 0;

    // Lets at least this much time pass on the board.
    virtual void wait(std::chrono::nanoseconds duration) = 0;
};

} // namespace calvorn
