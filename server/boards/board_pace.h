// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace calvorn {

// The board's own clock, and its tie to the real one. When paced, the calling thread sleeps as soon as the board is
// ahead of real time by 2 ms. A board that fell behind by less than 20 ms (a late wake-up, a busy machine) catches up;
// one that fell behind by more was idle and starts afresh.
class BoardPace
{
public:
    using Time = std::chrono::nanoseconds;

    // haste: how many times faster than the real clock a paced board runs; at least 1.
    explicit BoardPace(bool paced, int haste = 1)
        : m_paced(paced)
        , m_haste(haste)
    {
    }

    void advance(Time duration);
    Time now() const { return m_now; }

private:
    void followRealTime();

    bool m_paced;
    int m_haste;
    Time m_now{};
    Time m_checked{};
    std::chrono::steady_clock::time_point m_due{}; // the real time at which the board's clock is right
};

} // namespace calvorn
