// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace calvorn {

// A simulated serial board, without the line itself. PtyBoard runs it behind a pseudo-terminal and paces the bytes;
// tests can call it directly. Must be used by only one thread at a time.
class SerialBoard
{
public:
    virtual ~SerialBoard() = default;

    // Receives a byte from the host.
    virtual void receive(std::uint8_t byte) = 0;

    // Called when the line is free. Returns the next byte for the host, or nullopt if the board has nothing to send.
    // Each byte occupies the line for ten bit times.
    virtual std::optional<std::uint8_t> nextByte() = 0;

    // Returns how long the line is idle, in addition to transmitting the byte just returned by nextByte(), because the
    // board was not ready earlier.
    virtual std::chrono::nanoseconds idleTime() const { return {}; }
};

} // namespace calvorn
