// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace calvorn {

// The board's own clock, which can be paced to follow real time. With pacing, the calling thread sleeps whenever the
// board is more than 2 ms ahead of real time. A board that lags by up to 20 ms, after a late wake-up or on a busy
// machine, catches up; a longer lag means that the board was idle, so pacing restarts from the current time.
class BoardPace
{
public:
    using Time = std::chrono::nanoseconds;

    // haste: the speed of a paced board as a multiple of real time; at least 1.
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
    std::chrono::steady_clock::time_point m_due{}; // the real time that corresponds to the board's time
};

} // namespace calvorn
