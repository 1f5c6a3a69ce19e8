// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The first argument of aErrore, the same for every driver; docs/hardware/errors.md says what each one leads to.
enum class ErrorCode : std::int16_t {
    Transmission = 1,  // one transfer of a serial board failed and is counted; the work goes on
    Port = 2,          // the port is not open, or was lost
    Board = 3,         // the board answered wrongly or not at all, or the sweep cannot run
    Ignorable = 4,     // a condition that calls for no action
    Frequency = 5,     // a frequency that no tuning word of the generator can express
    Setting = 6,       // a value that the interface does not know; the former one stays
    ServerEnded = 100, // the server has gone: never sent by it, raised by the program itself
};

// The code as it stands in the event.
constexpr std::int16_t numberOf(ErrorCode code)
{
    return static_cast<std::int16_t>(code);
}

} // namespace calvorn
