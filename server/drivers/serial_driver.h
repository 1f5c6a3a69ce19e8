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

// What the drivers of boards on a serial line have in common: the port that the program wants, the course of a run of
// sweeps, and the way of a vector to the program. Main thread only.
class SerialDriver : public QObject
{
    Q_OBJECT

public:
    // Opens COM<port> with these line settings, or throws std::runtime_error with one sentence for the user.
    using LinkOpener = std::function<std::shared_ptr<ByteLink>(int port, const LineSettings &line)>;

    ~SerialDriver() override;

    // Vectors that the program was too slow for.
    std::uint64_t droppedVectors() const { return m_vectors.dropped(); }

public slots:
    // settings: such as "115200,N,8,1". Closes the former port first. False when the port cannot be opened; the reason
    // comes as ErrorCode::Port. Every sweep then tries to open it again.
    bool OpenPort(short port, const QString &settings);

    // Ends a sweep, with its aComplete, before the port goes.
    void ClosePort();

    // The program has taken this many vectors, and has room for as many more.
    void VectorsTaken(short count) { m_vectors.taken(count); }

    // Nothing here waits for a device without a time limit.
    bool IsWorking() const { return true; }

signals:
    void aComplete();
    void aErrore(short tipoErrore, const QString &descrizione);
    void PlanOfVectors(int start, int step, short mode);
    void aVettore(const QList<int> &vettore);

protected:
    enum class Run { None, Sweeping, Stopping };

    SerialDriver(LinkOpener opener, QObject *parent);

    // There is a fresh link, with these line settings.
    virtual void linkOpened(const LineSettings &line) = 0;
    // The link is of no use any more: it was lost, or is about to be replaced.
    virtual void linkGone() {}
    // The program closes the port: the last chance to tell the board something. The link may be lost already.
    virtual void beforeClosing() = 0;
    // The run is over; aComplete follows.
    virtual void runEnded() = 0;

    void report(ErrorCode code, const QString &sentence);
    // A condition that calls for no action: also on standard error output.
    void remark(const QString &sentence);

    ByteLink &link() { return *m_link; }
    bool isOpen() const;
    // Opens the port that the program wants, if it is not open. False, and reported, when that fails. Never called from
    // within a signal of the link.
    bool ensureOpen();

    Run run() const { return m_run; }
    void beginRun();
    void beginStopping();
    // One aComplete for each run: nothing when none is under way, as after a loss that came to light in a write.
    void finishRun();

    // Sends a vector on, or keeps it while the program has no room.
    void deliver(const VectorPlan &plan, QList<int> counts) { m_vectors.send(plan, std::move(counts)); }
    // Vectors that wait are of no use any more.
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
    std::optional<Port> m_port; // what the program wants to be open
    std::shared_ptr<ByteLink> m_link;
    VectorSender m_vectors;
    Run m_run = Run::None;
};

} // namespace calvorn
