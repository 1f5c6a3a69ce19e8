// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>

namespace calvorn {

// The calls of the operating system that a parallel port needs. Each returns a value >= 0, or the negative errno.
// May be called from any thread, by one thread at a time for one descriptor.
class PortSystem
{
public:
    virtual ~PortSystem() = default;

    // Reading and writing, closed on exec.
    virtual int open(const QString &path) = 0;

    virtual int ioctl(int descriptor, unsigned long request, void *argument) = 0;

    // Like ioctl(), for a request that may block: -EINTR when it has not returned in time.
    virtual int ioctlWithin(std::chrono::milliseconds limit, int descriptor, unsigned long request, void *argument) = 0;

    virtual void close(int descriptor) = 0;
};

// The kernel.
PortSystem &kernelPortSystem();

// While it lives, a blocking system call of this thread is interrupted (EINTR) once the time is over, and again
// every 50 ms until the object goes. Uses SIGUSR1, which must not be blocked in the thread.
class CallLimit
{
public:
    explicit CallLimit(std::chrono::milliseconds limit);
    ~CallLimit();

    CallLimit(const CallLimit &) = delete;
    CallLimit &operator=(const CallLimit &) = delete;

private:
    void *m_timer = nullptr; // timer_t
    bool m_armed = false;
};

} // namespace calvorn
