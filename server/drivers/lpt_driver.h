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

// The parallel-port board as the interface calvorn.Lpt offers it (protocol/calvorn.Lpt.xml). The operations arrive
// on the main thread, through the generated adaptor; none waits longer than one point of a sweep, or one start of
// the chip.
//
// Without an open port the settings, the frequency and the auxiliary bytes are remembered and reach the board when
// there is one; a sweep fails with ErrorCode::Port and completes; ReadDetector gives 0 with ErrorCode::Ignorable;
// WriteI2c gives false.
class LptDriver : public QObject
{
    Q_OBJECT

public:
    // Opens the port at a base address, or throws PortError.
    using PortOpener = std::function<OpenedPort(int)>;

    explicit LptDriver(PortOpener opener, QObject *parent = nullptr);
    ~LptDriver() override;

    // Vectors that the program was too slow for.
    std::uint64_t droppedVectors() const { return m_vectors.dropped(); }

public slots:
    // The sweep ends at its next point and aComplete follows. The reason makes no difference to the board.
    // When nothing runs: ErrorCode::Ignorable, and no aComplete.
    void StopSweep(short reason);

    // Names and numbers that the interface does not know: ErrorCode::Setting, and the former value stays. A multiplier
    // that the chip does not have: ErrorCode::Setting, and nothing is loaded or swept until it is corrected.
    void SetDdsDevice(const QString &chip);
    void SetAdcDevice(const QString &converter);
    void SetMultiplier(short multiplier);
    void SetXtalFrequency(double hertz);
    void SetOffset(double hertz);
    void SetSpeed(short speed);

    // Vectors follow until the sweep is stopped. Harmless while a sweep runs. A port that was lost, or could not be
    // opened, is opened, and the board told again all that it knew. ErrorCode::Board and aComplete when the system has
    // no thread left for the sweep.
    void RunSweep();

    // Closes the former port first. False when there is no such port; the reason comes as ErrorCode::Ignorable,
    // because the caller has the answer already, and again with the error of a sweep that is tried all the same.
    bool OpenPort(short address);
    void ResetDevice();

    // Ends a sweep, with its aComplete, and switches the generator's output off before the port goes.
    void ClosePort();

    // For the next sweep, or the running one: no vector of the former plan is emitted after this has returned.
    // Frequencies above the generator's useful maximum, or above half its clock, are swept as they are; that is
    // said once, in the log and as ErrorCode::Ignorable.
    void PrepareSweep(int start, int step);

    // ErrorCode::Frequency when the generator cannot make it; the former frequency then stays.
    void SetFrequency(int hertz);
    short ReadDetector();
    void SetAux(uchar value, short output);
    bool WriteI2c(uchar control, uchar command, uchar data);
    // The program has taken this many vectors, and has room for as many more.
    void VectorsTaken(short count) { m_vectors.taken(count); }

    // False while an access of the running sweep hangs.
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
    std::optional<int> m_address; // what the program wants to be open
    QString m_whyClosed;          // why the latest attempt to open the port failed
    bool m_lost = false;          // an access has failed since the port was opened
    QString m_clockFault;         // as reported last
    quint64 m_run = 0;
    std::int64_t m_highestHz = 0; // of the plan
    bool m_remarked = false;      // on a frequency that is too high, since the port was opened or the clock changed
    SweepThread m_sweep;          // uses the board, so it goes first
};

} // namespace calvorn
