// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace calvorn {

// A mutex that serves waiting threads in the order of their requests. A sweep locks the port again immediately after
// unlocking it; with std::mutex, another thread might have to wait for the whole sweep.
class FairMutex
{
public:
    void lock()
    {
        std::unique_lock guard(m_guard);
        const std::uint64_t ticket = m_next++;
        m_turn.wait(guard, [&] { return ticket == m_serving; });
    }

    void unlock()
    {
        bool othersWait = false;
        {
            const std::lock_guard guard(m_guard);
            ++m_serving;
            othersWait = m_serving != m_next;
        }
        if (othersWait)
            m_turn.notify_all();
    }

private:
    std::mutex m_guard;
    std::condition_variable m_turn;
    std::uint64_t m_next = 0;
    std::uint64_t m_serving = 0;
};

} // namespace calvorn
