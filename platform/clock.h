// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The program's time source. Tests use a clock that they advance themselves.
class Clock
{
public:
    virtual ~Clock() = default;

    // Returns a monotonic time in milliseconds, which wraps around after 2^32 ms.
    virtual std::uint32_t tickCount() = 0;

    // Suspends the calling thread. The window does not repaint during this time.
    virtual void sleep(int milliseconds) = 0;

    // Waits up to this long for window events, and processes them.
    virtual void pumpMessages(int milliseconds) = 0;
};

} // namespace calvorn
