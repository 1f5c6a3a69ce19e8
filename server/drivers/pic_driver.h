// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/pic_frames.h"
#include "server/drivers/serial_driver.h"
#include "server/synthesiser/dds_clock.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>
#include <optional>

namespace calvorn {

// The PIC board as the interface calvorn.Pic offers it (protocol/calvorn.Pic.xml, docs/hardware/pic-board.md). The
// operations arrive on the main thread, through the generated adaptor. A command waits for its answer at most 0.5 s,
// and once more after the line was made free; every operation ends within 2.4 s. A sweep is driven by events.
//
// Errors: Transmission for a damaged sweep (not shown; the sweep goes on), Board when a command gets no answer, no
// good sweep comes any more or the board refuses to sweep, Port when the port cannot be opened, is not open or was
// lost, Setting for an unknown command, Ignorable once when a frequency is more than the generator is good for.
class PicDriver : public SerialDriver
{
    Q_OBJECT

public:
    // The generator on the board, as the program believes in it. The board computes its own words; this serves the
    // remark on a frequency that is too high. Asked when the port is opened.
    using ClockReader = std::function<DdsClock()>;

    PicDriver(LinkOpener opener, ClockReader readClock, QObject *parent = nullptr);

public slots:
    // aComplete follows when the board has fallen silent. Nothing when no sweep runs.
    void StopSweep(short reason);

    // Vectors follow until the sweep is stopped. A port that was lost is opened again.
    void RunSweep();

    // Start (Hz) and step (Hz). False when the board refuses or does not answer, and while a sweep runs.
    bool PrepareSweep(int start, int step);

    // "A", "B", "D" with hertz, "*" without. False like PrepareSweep.
    bool SendFrequency(const QString &letter, int frequency);

private:
    enum class Answer { Accepted, Refused, Missing };

    struct Plan
    {
        int start = 0;
        int step = 0;
    };

    void linkOpened(const LineSettings &line) override;
    void beforeClosing() override;
    void runEnded() override;

    bool isReady();
    bool command(const QByteArray &text);
    Answer exchange(const QByteArray &text, qint64 patience);
    bool resynchronise(qint64 patience);
    bool sendPlan();
    void remarkOnce(std::int64_t hertz);
    void onBytes();
    void takeSweeps();
    void awaitSilence(const QByteArray &bytes);
    void onLate();

    ClockReader m_readClock;
    DdsClock m_clock;
    bool m_remarked = false; // since the port was opened
    std::optional<Plan> m_plan;
    PicDecoder m_decoder;
    bool m_exchanging = false;
    bool m_outOfStep = true;   // nobody knows what the board is doing
    bool m_ended = false;      // while stopping: the board has said so
    QByteArray m_heard;        // while stopping: the last bytes
    QByteArray m_afterAnswer;  // what came behind the last answer
    QDeadlineTimer m_deadline; // of the operation under way
    QTimer m_late;             // no good sweep, or no end of one
    QTimer m_silence;
    int m_sweepMs = 0; // patience for one sweep
};

} // namespace calvorn
