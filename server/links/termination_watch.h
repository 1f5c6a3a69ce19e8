// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/wake_up.h"

#include <QObject>
#include <QThread>

#include <memory>

namespace calvorn {

// Emits a signal when this process is asked to end: by the end of standard input (the parent is gone), or by SIGTERM,
// SIGINT or SIGHUP. Only one object in a process; call holdTerminationBack() first.
//
// Watches in its own thread, so that it also works while the server waits for its hardware. If the process still lives
// kLatestEndMs after the request, an access to its hardware hangs, and the watch ends the process.
class TerminationWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLatestEndMs = 10'000;

    explicit TerminationWatch(QObject *parent = nullptr);
    ~TerminationWatch() override;

    // False if the system could not start another thread; refusal() is the sentence for the user.
    bool isWatching() const { return m_thread->isRunning(); }
    static QString refusal();

signals:
    void asked();

private:
    void watch() const; // runs in the thread

    WakeUp m_asked;
    int m_signals = -1;
    int m_done = -1; // readable when the watch is no longer needed
    std::unique_ptr<QThread> m_thread;
};

} // namespace calvorn
