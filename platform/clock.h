// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// The program's source of time; tests use one that they advance themselves.
class Clock
{
public:
    virtual ~Clock() = default;

    // Returns milliseconds of a monotonic clock; wraps around after 2^32 ms.
    virtual std::uint32_t tickCount() = 0;

    // Sleeps the calling thread; the window does not repaint during this time.
    virtual void sleep(int milliseconds) = 0;

    // Waits at most this long for window messages and delivers them.
    virtual void pumpMessages(int milliseconds) = 0;
};

} // namespace calvorn
