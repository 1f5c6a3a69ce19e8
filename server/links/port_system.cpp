// SPDX-License-Identifier: MIT
#include "server/links/port_system.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

// The kernel interface has this member (timer_create(2)), but older C libraries do not define its name.
#ifndef sigev_notify_thread_id
#define sigev_notify_thread_id _sigev_un._tid
#endif

namespace calvorn {

namespace {

constexpr long kNanosInSecond = 1'000'000'000;
constexpr long kRepeatNanos = 50'000'000; // without repetition, a signal sent just before the call would be lost

int orErrno(int result)
{
    return result < 0 ? -errno : result;
}

timespec timespecOf(std::chrono::nanoseconds duration)
{
    return {static_cast<time_t>(duration.count() / kNanosInSecond),
            static_cast<long>(duration.count() % kNanosInSecond)};
}

class KernelPortSystem : public PortSystem
{
public:
    int open(const QString &path) override
    {
        return orErrno(::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC));
    }

    int ioctl(int descriptor, unsigned long request, void *argument) override
    {
        return orErrno(::ioctl(descriptor, request, argument));
    }

    int ioctlWithin(std::chrono::milliseconds limit, int descriptor, unsigned long request, void *argument) override
    {
        const CallLimit limited(limit);
        return ioctl(descriptor, request, argument);
    }

    void close(int descriptor) override { ::close(descriptor); }
};

} // namespace

PortSystem &kernelPortSystem()
{
    static KernelPortSystem system;
    return system;
}

CallLimit::CallLimit(std::chrono::milliseconds limit)
{
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    sigemptyset(&action.sa_mask);
    sigaction(SIGUSR1, &action, nullptr); // without SA_RESTART, so that the call returns EINTR

    sigevent event = {};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = SIGUSR1;
    event.sigev_notify_thread_id = static_cast<pid_t>(::syscall(SYS_gettid));
    if (::timer_create(CLOCK_MONOTONIC, &event, &m_timer) != 0)
        return;
    m_armed = true;
    const itimerspec times = {{0, kRepeatNanos}, timespecOf(limit)};
    ::timer_settime(m_timer, 0, &times, nullptr);
}

CallLimit::~CallLimit()
{
    if (m_armed)
        ::timer_delete(m_timer);
}

} // namespace calvorn
