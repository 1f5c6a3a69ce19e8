// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/wake_up.h"

#include <QObject>
#include <QThread>

#include <memory>

namespace calvorn {

// Tells when this process is asked to end: standard input at its end (whoever started us is gone), or SIGTERM, SIGINT
// or SIGHUP. One object for a process; holdTerminationBack() must have run before.
//
// It looks in a thread of its own, so that a server that waits for its hardware notices, too. Whoever is asked has
// kLatestEndMs to end; a process that still lives then hangs in an access to its hardware, and is ended as it is.
class TerminationWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLatestEndMs = 10'000;

    explicit TerminationWatch(QObject *parent = nullptr);
    ~TerminationWatch() override;

    // False where the system has no thread left; refusal() then says so, in one sentence for the user.
    bool isWatching() const { return m_thread->isRunning(); }
    static QString refusal();

signals:
    void asked();

private:
    void watch() const; // in the thread

    WakeUp m_asked;
    int m_signals = -1;
    int m_done = -1; // readable when the watch is no longer needed
    std::unique_ptr<QThread> m_thread;
};

} // namespace calvorn
