// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace calvorn {

// A simulated board for a serial line, without the line itself. PtyBoard runs it behind a pseudo-terminal and paces the
// bytes; tests can call it directly. Used by one thread at a time.
class SerialBoard
{
public:
    virtual ~SerialBoard() = default;

    // Receives a byte from the host.
    virtual void receive(std::uint8_t byte) = 0;

    // Called when the line is free. Returns the next byte for the host, or nothing if the board has none now.
    // Each byte takes the time of ten bits on the line.
    virtual std::optional<std::uint8_t> nextByte() = 0;

    // Returns the idle time of the line in addition to the byte that nextByte() has returned: the board was not ready
    // earlier.
    virtual std::chrono::nanoseconds idleTime() const { return {}; }
};

} // namespace calvorn
