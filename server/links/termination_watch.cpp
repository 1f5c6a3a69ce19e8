// SPDX-License-Identifier: MIT
#include "server/links/termination_watch.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace calvorn {

namespace {

sigset_t terminationSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGHUP);
    return set;
}

} // namespace

void blockTerminationSignals()
{
    const sigset_t set = terminationSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

TerminationWatch::TerminationWatch(QObject *parent)
    : QObject(parent)
{
    const sigset_t set = terminationSignals();
    m_signals = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_signals >= 0) {
        auto *notifier = new QSocketNotifier(m_signals, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
            notifier->setEnabled(false);
            emit asked();
        });
    }
    m_standardInput = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(m_standardInput, &QSocketNotifier::activated, this, &TerminationWatch::readStandardInput);
}

TerminationWatch::~TerminationWatch()
{
    if (m_signals >= 0)
        close(m_signals);
}

void TerminationWatch::readStandardInput()
{
    // Nothing is expected here; what comes is thrown away, only the end counts.
    std::array<char, 256> unused{};
    const ssize_t got = read(STDIN_FILENO, unused.data(), unused.size());
    if (got > 0 || (got < 0 && (errno == EAGAIN || errno == EINTR)))
        return;
    m_standardInput->setEnabled(false);
    emit asked();
}

} // namespace calvorn
