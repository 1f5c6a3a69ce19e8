// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

namespace calvorn {

// Tells when this process is asked to end: standard input at its end (whoever started us is gone), or SIGTERM,
// SIGINT or SIGHUP. One object for a process; blockTerminationSignals() must have run before.
class TerminationWatch : public QObject
{
    Q_OBJECT

public:
    explicit TerminationWatch(QObject *parent = nullptr);
    ~TerminationWatch() override;

signals:
    void asked();

private:
    void readStandardInput();

    int m_signals = -1;
    QSocketNotifier *m_standardInput = nullptr;
};

// To be called in main() before the first thread starts: every thread inherits the mask, and the signals wait in
// the watch's descriptor (signalfd(2)) in place of killing the process. SIGPIPE is ignored: a vanished reader is
// seen as a failed write.
void blockTerminationSignals();

} // namespace calvorn
