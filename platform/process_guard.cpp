// SPDX-License-Identifier: MIT
#include "platform/process_guard.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <initializer_list>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <unistd.h>

// Writes the counters of a coverage build (tools/coverage); undefined in other builds.
extern "C" void __gcov_dump() __attribute__((weak)); // NOLINT(bugprone-reserved-identifier)

namespace calvorn {

namespace {

sigset_t setOf(std::initializer_list<int> members)
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : members)
        sigaddset(&set, signal);
    return set;
}

sigset_t termination()
{
    return setOf({SIGTERM, SIGINT, SIGHUP});
}

int descriptorOf(const sigset_t &set)
{
    return signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

bool endWithParent()
{
    const pid_t parent = getppid();
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    // If the parent has died between the two calls, the kernel does not send the signal.
    return getppid() == parent;
}

void wakeWithParent()
{
    prctl(PR_SET_PDEATHSIG, SIGCONT);
}

void leaveTerminalGroup()
{
    setpgid(0, 0);
    // A terminal may stop a background process that writes to it.
    std::signal(SIGTTOU, SIG_IGN);
}

bool isIgnored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void holdTerminationBack()
{
    const sigset_t set = termination();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

void ignoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

int terminationSignals()
{
    sigset_t set = termination();
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        if (isIgnored(signal))
            sigdelset(&set, signal);
    return descriptorOf(set);
}

void holdStopBack()
{
    const sigset_t set = setOf({SIGTSTP});
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

// A pending signal is delivered before the mask is restored.
void letStop()
{
    const sigset_t set = setOf({SIGTSTP});
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

int heldStop()
{
    return descriptorOf(setOf({SIGTSTP}));
}

void keepStandardDescriptors()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) < 0)
            // open() returns the lowest free descriptor, which is this one. Only standard error is writable.
            [[maybe_unused]]
            const int taken = open("/dev/null", descriptor == STDERR_FILENO ? O_WRONLY : O_RDONLY);
}

void endAtOnce(int code)
{
    std::fflush(nullptr);
    if (__gcov_dump)
        __gcov_dump();
    _exit(code);
}

} // namespace calvorn
