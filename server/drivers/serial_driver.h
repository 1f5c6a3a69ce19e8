// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/error_codes.h"
#include "server/drivers/vector_sender.h"
#include "server/links/line_settings.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace calvorn {

class ByteLink;

// Base class of the drivers for serial boards: manages the port, the state of a run of sweeps and the delivery of
// vectors to the program. Main thread only.
class SerialDriver : public QObject
{
    Q_OBJECT

public:
    // Opens COM<port> with these line settings, or throws std::runtime_error with a message for the user.
    using LinkOpener = std::function<std::shared_ptr<ByteLink>(int port, const LineSettings &line)>;

    ~SerialDriver() override;

    // Returns the number of vectors that were discarded because the program was too slow.
    std::uint64_t droppedVectors() const { return m_vectors.dropped(); }

public slots:
    // settings: such as "115200,N,8,1". Closes the previous port first. Returns false if the port cannot be opened, and
    // reports the reason as ErrorCode::Port. Every sweep then tries to open the port again.
    bool OpenPort(short port, const QString &settings);

    // Stops a running sweep before closing the port, and then emits its aComplete.
    void ClosePort();

    // Called when the program has processed this many vectors and can accept as many more.
    void VectorsTaken(short count) { m_vectors.taken(count); }

    // Always returns true, because every wait for a device has a time limit.
    bool IsWorking() const { return true; }

signals:
    void aComplete();
    void aErrore(short tipoErrore, const QString &descrizione);
    void PlanOfVectors(int start, int step, short mode);
    void aVettore(const QList<int> &vettore);

protected:
    enum class Run { None, Sweeping, Stopping };

    SerialDriver(LinkOpener opener, QObject *parent);

    // Called when a link with these line settings has been opened.
    virtual void linkOpened(const LineSettings &line) = 0;
    // Called when the link has been lost or is about to be closed or replaced.
    virtual void linkGone() {}
    // Called before the program closes the port, to send the board its last commands. The link may already be lost.
    virtual void beforeClosing() = 0;
    // Called when a run has ended; aComplete follows.
    virtual void runEnded() = 0;

    void report(ErrorCode code, const QString &sentence);
    // Reports a condition that requires no action; also writes it to standard error.
    void remark(const QString &sentence);

    ByteLink &link() { return *m_link; }
    bool isOpen() const;
    // Opens the port that the program has requested, unless it is already open. On failure, reports the error and
    // returns false. Must not be called from a slot connected to the link.
    bool ensureOpen();

    Run run() const { return m_run; }
    void beginRun();
    void beginStopping();
    // Ends the run and emits its aComplete. Does nothing if no run is active, for example because a write has detected
    // a loss and ended it.
    void finishRun();

    // Sends a vector, or stores it while the program cannot accept more.
    void deliver(const VectorPlan &plan, QList<int> counts) { m_vectors.send(plan, std::move(counts)); }
    // Discards the pending vector, which is out of date.
    void discardWaiting() { m_vectors.discardWaiting(); }

private:
    struct Port
    {
        int number = 0;
        QString settings;
    };

    bool openLink();
    void onLost(const QString &reason);

    LinkOpener m_opener;
    std::optional<Port> m_port; // the port that the program has requested
    std::shared_ptr<ByteLink> m_link;
    VectorSender m_vectors;
    Run m_run = Run::None;
};

} // namespace calvorn
