// SPDX-License-Identifier: MIT
#include "server/links/termination_watch.h"

#include "platform/process_guard.h"
#include "server/links/thread_start.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace calvorn {

namespace {

constexpr int kForEver = -1;
constexpr int kEndedByWatch = 1;

// Discards bytes from standard input; only end-of-file matters.
bool isAtEnd()
{
    std::array<char, 256> unused{};
    const ssize_t got = read(STDIN_FILENO, unused.data(), unused.size());
    return got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR);
}

} // namespace

TerminationWatch::TerminationWatch(QObject *parent)
    : QObject(parent)
    , m_signals(terminationSignals())
    , m_done(eventfd(0, EFD_CLOEXEC))
    , m_thread(QThread::create([this] { watch(); }))
{
    connect(&m_asked, &WakeUp::knocked, this, &TerminationWatch::asked);
    m_thread->start();
}

TerminationWatch::~TerminationWatch()
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(m_done, &one, sizeof one);
    m_thread->wait();
    for (const int descriptor : {m_signals, m_done})
        if (descriptor >= 0)
            close(descriptor);
}

QString TerminationWatch::refusal()
{
    return ThreadError::sentence();
}

void TerminationWatch::watch() const
{
    wakeWithParent();
    // poll() ignores a negative descriptor.
    std::array<pollfd, 3> watched{{{m_done, POLLIN, 0}, {m_signals, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
    pollfd &done = watched[0];
    bool asked = false;
    while (!asked) {
        if (poll(watched.data(), watched.size(), kForEver) < 0)
            continue;
        if (done.revents != 0)
            return;
        asked = watched[1].revents != 0 || (watched[2].revents != 0 && isAtEnd());
    }
    m_asked.knock();
    while (poll(&done, 1, kLatestEndMs) < 0) {
    }
    if (done.revents == 0)
        _exit(kEndedByWatch);
}

} // namespace calvorn
