// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/error_codes.h"
#include "server/drivers/pic_frames.h"
#include "server/drivers/vector_gate.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace calvorn {

class ByteLink;

// The PIC board as the interface calvorn.Pic offers it (protocol/calvorn.Pic.xml, docs/hardware/pic-board.md). The
// operations arrive on the main thread, through the generated adaptor. A command waits for its answer at most 0.5 s,
// and once more after the line was made free; every operation ends within 2.4 s. A sweep is driven by events.
//
// Errors: Transmission for a damaged sweep (not shown; the sweep goes on), Board when a command gets no answer, no
// good sweep comes any more or the board refuses to sweep, Port when the port cannot be opened, is not open or was
// lost, Setting for an unknown command.
class PicDriver : public QObject
{
    Q_OBJECT

public:
    // Opens COM<port> with these line settings, or throws std::runtime_error with one sentence for the user.
    using LinkOpener = std::function<std::shared_ptr<ByteLink>(int port, const QString &settings)>;

    explicit PicDriver(LinkOpener opener, QObject *parent = nullptr);
    ~PicDriver() override;

    // Vectors that the program was too slow for.
    std::uint64_t droppedVectors() const { return m_gate.dropped(); }

public slots:
    // aComplete follows when the board has fallen silent. Nothing when no sweep runs.
    void StopSweep(short reason);

    // Vectors follow until the sweep is stopped. A port that was lost is opened again.
    void RunSweep();

    // Start (Hz) and step (Hz). False when the board refuses or does not answer, and while a sweep runs.
    bool PrepareSweep(int start, int step);

    // Closes the former port first.
    bool OpenPort(short port, const QString &settings);

    // Ends a sweep, with its aComplete.
    void ClosePort();

    // "A", "B", "D" with hertz, "*" without. False like PrepareSweep.
    bool SendFrequency(const QString &command, int frequency);
    void VectorTaken();

signals:
    void aComplete();
    void aErrore(short tipoErrore, const QString &descrizione);
    void aVettore(const QList<int> &vettore);

private:
    enum class Run { None, Sweeping, Stopping };
    enum class Answer { Accepted, Refused, Missing };

    struct Port
    {
        int number = 0;
        QString settings;
    };
    struct Plan
    {
        int start = 0;
        int step = 0;
    };

    void report(ErrorCode code, const QString &sentence);
    bool isOpen() const;
    bool openLink();
    bool reopen();
    bool isReady();
    bool command(const QByteArray &text);
    Answer exchange(const QByteArray &text, qint64 patience);
    bool resynchronise(qint64 patience);
    bool sendPlan();
    void onBytes();
    void takeSweeps();
    void awaitSilence(const QByteArray &bytes);
    void onLate();
    void finishRun();
    void onLost(const QString &reason);

    LinkOpener m_opener;
    std::optional<Port> m_port; // what the program wants to be open
    std::optional<Plan> m_plan;
    std::shared_ptr<ByteLink> m_link;
    PicDecoder m_decoder;
    VectorGate m_gate;
    Run m_run = Run::None;
    bool m_exchanging = false;
    QByteArray m_tail;         // while stopping: the last bytes
    QByteArray m_beyond;       // what came after the last answer
    QDeadlineTimer m_deadline; // of the operation under way
    QTimer m_late;             // no good sweep, or no end of one
    QTimer m_silence;
    int m_sweepMs = 0; // patience for one sweep
};

} // namespace calvorn
