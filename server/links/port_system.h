// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>

namespace calvorn {

// The system calls that a parallel port needs. Each returns a value >= 0, or -errno on failure. They can be called from
// any thread, but a descriptor must be used by only one thread at a time.
class PortSystem
{
public:
    virtual ~PortSystem() = default;

    // Opens the file for reading and writing, with close-on-exec.
    virtual int open(const QString &path) = 0;

    virtual int ioctl(int descriptor, unsigned long request, void *argument) = 0;

    // Like ioctl(), but for a request that may block: returns -EINTR if it exceeds the time limit.
    virtual int ioctlWithin(std::chrono::milliseconds limit, int descriptor, unsigned long request, void *argument) = 0;

    virtual void close(int descriptor) = 0;
};

// Returns the implementation that calls the kernel.
PortSystem &kernelPortSystem();

// During its lifetime, interrupts a blocking system call in this thread (EINTR) when the time limit has expired, and
// then every 50 ms. Uses SIGUSR1, which must not be blocked in the thread.
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
