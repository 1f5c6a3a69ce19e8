// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/wake_up.h"

#include <QObject>
#include <QThread>

#include <memory>

namespace calvorn {

// Emits a signal when this process should exit: on end-of-file on standard input (the parent has exited), or on
// SIGTERM, SIGINT or SIGHUP. There can be only one object in a process; call holdTerminationBack() first.
//
// Watches in its own thread, so that it works even while the server waits for the hardware. If the process is still
// running kLatestEndMs after the request, a hardware access must have hung, and the watch terminates the process.
class TerminationWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLatestEndMs = 10'000;

    explicit TerminationWatch(QObject *parent = nullptr);
    ~TerminationWatch() override;

    // Returns false if the system could not start another thread; refusal() returns the message for the user.
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
