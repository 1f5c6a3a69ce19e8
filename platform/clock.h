// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// Time, as the program sees it; a test advances its own.
class Clock
{
public:
    virtual ~Clock() = default;

    // Milliseconds of a monotonic clock; wraps around after 2^32 ms.
    virtual std::uint32_t tickCount() = 0;

    // Sleeps the calling thread. The window does not repaint meanwhile.
    virtual void sleep(int milliseconds) = 0;

    // Waits for window messages, at most this long, and delivers them.
    virtual void pumpMessages(int milliseconds) = 0;
};

} // namespace calvorn
