// SPDX-License-Identifier: MIT
#include "server/boards/board_pace.h"

#include <thread>

namespace calvorn {

namespace {
constexpr std::chrono::microseconds kCheckEvery{200};
constexpr std::chrono::milliseconds kMostAhead{2};
constexpr std::chrono::milliseconds kMostBehind{20};
} // namespace

void BoardPace::advance(Time duration)
{
    m_now += duration;
    if (m_paced && m_now - m_checked >= kCheckEvery)
        followRealTime();
}

void BoardPace::followRealTime()
{
    m_due += (m_now - m_checked) / m_haste;
    m_checked = m_now;
    const auto real = std::chrono::steady_clock::now();
    if (m_due < real - kMostBehind)
        m_due = real;
    else if (m_due > real + kMostAhead)
        std::this_thread::sleep_until(m_due);
}

} // namespace calvorn
