// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>

namespace calvorn {

// The system calls that a parallel port needs. Each returns a value >= 0, or the negative errno. Can be called from any
// thread, but by only one thread at a time for one descriptor.
class PortSystem
{
public:
    virtual ~PortSystem() = default;

    // Opens the file for reading and writing, with close-on-exec.
    virtual int open(const QString &path) = 0;

    virtual int ioctl(int descriptor, unsigned long request, void *argument) = 0;

    // Like ioctl(), for a request that may block: returns -EINTR when it exceeds the time limit.
    virtual int ioctlWithin(std::chrono::milliseconds limit, int descriptor, unsigned long request, void *argument) = 0;

    virtual void close(int descriptor) = 0;
};

// The implementation that calls the kernel.
PortSystem &kernelPortSystem();

// During its lifetime, interrupts a blocking system call of this thread (EINTR) once the time is over, and then every
// 50 ms. Uses SIGUSR1, which must not be blocked in the thread.
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
