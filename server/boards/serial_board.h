// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace calvorn {

// A simulated board behind a serial line, without the line. PtyBoard puts it behind a pseudo-terminal and paces the
// bytes; a test can speak to it directly. Used by one thread at a time.
class SerialBoard
{
public:
    virtual ~SerialBoard() = default;

    // A byte from the host.
    virtual void receive(std::uint8_t byte) = 0;

    // The line is free: the next byte to the host, or nothing when the board has none to send now. Each byte then
    // takes the time of ten bits on the line.
    virtual std::optional<std::uint8_t> nextByte() = 0;

    // How long the line has to be idle beside the byte that nextByte() has given: the board was not ready earlier.
    virtual std::chrono::nanoseconds idleTime() const { return {}; }
};

} // namespace calvorn
