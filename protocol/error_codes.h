// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The first argument of aErrore, the same for every driver; docs/hardware/errors.md describes the effect of each
// code.
enum class ErrorCode : std::int16_t {
    Transmission = 1,  // a transfer from a serial board failed; it is counted, and work continues
    Port = 2,          // the port is not open, or was lost
    Board = 3,         // the board's reply is wrong or missing, or the sweep cannot run
    Ignorable = 4,     // a condition that requires no action
    Frequency = 5,     // the generator has no tuning word for the frequency
    Setting = 6,       // the interface does not support the value; the previous one stays in effect
    ServerEnded = 100, // the server has exited; reported by the program, never sent by the server
};

// Returns the code as sent in the event.
constexpr std::int16_t numberOf(ErrorCode code)
{
    return static_cast<std::int16_t>(code);
}

} // namespace calvorn
