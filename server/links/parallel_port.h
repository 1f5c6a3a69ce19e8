// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/port_error.h"

#include <chrono>
#include <cstdint>

namespace calvorn {

// The three registers of a PC parallel port, at base+0, +2 and +1, as raw bits. The hardware inverts STROBE, AUTOFD and
// SELECT-IN in the control register and BUSY in the status register between bit and pin; this class does not compensate
// for that. Must be used by only one thread at a time. Every access may throw PortError.
class ParallelPort
{
public:
    virtual ~ParallelPort() = default;

    virtual void writeData(std::uint8_t value) = 0;
    virtual void writeControl(std::uint8_t value) = 0;
    virtual std::uint8_t readStatus() = 0;

    // Throws PortError if the port's hardware has disappeared. Some systems accept writes to such a port and return 0
    // for reads, so data read since the last call is valid only if this call returns.
    virtual void confirmPresent() = 0;

    // Waits until at least this much board time has passed.
    virtual void wait(std::chrono::nanoseconds duration) = 0;
};

} // namespace calvorn
