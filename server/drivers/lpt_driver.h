// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/lpt_board.h"
#include "server/drivers/sweep_thread.h"
#include "server/drivers/vector_sender.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace calvorn {

// Implements the calvorn.Lpt interface (protocol/calvorn.Lpt.xml) for the parallel-port board. The generated adaptor
// calls the operations on the main thread. They wait no longer than one sweep point or one chip start-up takes.
//
// Without an open port, the settings, the frequency and the auxiliary bytes are stored and sent to the board as soon as
// a port is open; a sweep reports ErrorCode::Port and completes; ReadDetector returns 0 and reports
// ErrorCode::Ignorable; WriteI2c returns false.
class LptDriver : public QObject
{
    Q_OBJECT

public:
    // Opens the port at a base address, or throws PortError.
    using PortOpener = std::function<OpenedPort(int)>;

    explicit LptDriver(PortOpener opener, QObject *parent = nullptr);
    ~LptDriver() override;

    // Returns the number of vectors that were discarded because the program was too slow.
    std::uint64_t droppedVectors() const { return m_vectors.dropped(); }

public slots:
    // Ends the sweep at its next point; aComplete follows. The driver ignores the reason. If no sweep is running,
    // reports ErrorCode::Ignorable without an aComplete.
    void StopSweep(short reason);

    // A name or number that the interface does not define is reported as ErrorCode::Setting and has no effect. A
    // multiplier that the chip does not support is also reported as ErrorCode::Setting; loads and sweeps fail until it
    // is corrected.
    void SetDdsDevice(const QString &chip);
    void SetAdcDevice(const QString &converter);
    void SetMultiplier(short multiplier);
    void SetXtalFrequency(double hertz);
    void SetOffset(double hertz);
    void SetSpeed(short speed);

    // Starts a sweep; vectors follow until it is stopped. Does nothing while a sweep is running. Reopens a port that
    // was lost or could not be opened, and sends all settings to the board again. If the system cannot start a thread
    // for the sweep, reports ErrorCode::Board and emits aComplete.
    void RunSweep();

    // Closes the previous port first. Returns false if the port cannot be opened. The reason is reported as
    // ErrorCode::Ignorable, because the caller already has the result, and is added to the error of each later sweep.
    bool OpenPort(short address);
    void ResetDevice();

    // Ends a running sweep, emits its aComplete and switches the generator output off before closing the port.
    void ClosePort();

    // Sets the plan for the next sweep or a running one; after it returns, no vector with the previous plan is
    // emitted. Frequencies above the generator's useful maximum or half its clock are swept as requested; this is
    // reported once, in the log and as ErrorCode::Ignorable.
    void PrepareSweep(int start, int step);

    // If the generator cannot produce the frequency, reports ErrorCode::Frequency and keeps the previous one.
    void SetFrequency(int hertz);
    short ReadDetector();
    void SetAux(uchar value, short output);
    bool WriteI2c(uchar control, uchar command, uchar data);
    // Called when the program has processed this many vectors and can accept as many more.
    void VectorsTaken(short count) { m_vectors.taken(count); }

    // Returns false while the running sweep hangs in a hardware access.
    bool IsWorking() const { return !m_sweep.isStuck(); }

signals:
    void aComplete();
    void aErrore(short tipoErrore, const QString &descrizione);
    void PlanOfVectors(int start, int step, short mode);
    void aVettore(const QList<int> &vettore);

private:
    void report(ErrorCode code, const QString &sentence);
    bool reportFailure(const std::function<void()> &work);
    void reportLoss(const QString &sentence);
    void reportClock(const QString &sentence);
    bool attachPort();
    void remarkOnce(std::int64_t hertz);
    void finishSweep();
    void onVector(quint64 run, quint64 planNumber, const SweepPlan &plan, const QList<int> &vector);
    void onFailed(quint64 run, ErrorCode code, const QString &sentence);
    void onEnded(quint64 run);

    PortOpener m_opener;
    LptBoard m_board;
    VectorSender m_vectors;
    std::optional<int> m_address; // the port that the program has requested
    QString m_whyClosed;          // why the latest attempt to open the port failed
    bool m_lost = false;          // an access has failed since the port was opened
    QString m_clockFault;         // the last reported fault
    quint64 m_run = 0;
    std::int64_t m_highestHz = 0; // of the plan
    bool m_remarked = false;      // reported an excessive frequency since the port was opened or the clock changed
    SweepThread m_sweep;          // uses the board, so it is destroyed first
};

} // namespace calvorn
