// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/pic_frames.h"
#include "server/drivers/pic_identity.h"
#include "server/drivers/serial_driver.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <optional>

namespace calvorn {

// The PIC board as the interface calvorn.Pic offers it (protocol/calvorn.Pic.xml, docs/hardware/pic-board.md). The
// operations arrive on the main thread, through the generated adaptor. A command waits for its answer at most 0.5 s,
// and once more after the line was made free; every operation returns within 1.9 s. What one click asks of a board that
// does not answer takes 1.9 s in all. Sweeps are started and driven by events.
//
// A sweep runs only with a plan that the board has accepted, and its vectors carry that plan: frames that the board has
// swept with another one are damaged.
//
// The board is asked who it is before its first command, and told before each plan how long the detector has to settle
// where the settings say so.
//
// Errors: Transmission for a damaged sweep (not shown; the sweep goes on), Board when a command gets no answer, no
// good sweep comes any more or the board refuses to sweep, Port when the port cannot be opened, is not open or was
// lost, Setting for an unknown command or a settling time that the board refuses, Ignorable once when a frequency is
// more than the generator is good for, or when the board has another generator than the settings.
class PicDriver : public SerialDriver
{
    Q_OBJECT

public:
    // Asked when the port is opened.
    using SettingsReader = std::function<PicSettings()>;

    PicDriver(LinkOpener opener, SettingsReader readSettings, QObject *parent = nullptr);

public slots:
    // aComplete follows when the board has fallen silent. Nothing when no sweep runs.
    void StopSweep(short reason);

    // Returns at once; vectors follow until the sweep is stopped. Without an accepted plan, or when the board does not
    // start, aComplete follows instead. A port that is not open is opened.
    void RunSweep();

    // Start (Hz) and step (Hz). False when the board refuses or does not answer, and while a sweep runs.
    bool PrepareSweep(int start, int step);

    // A letter of protocol/pic_commands.h with hertz, the reset without. False like PrepareSweep; the reset ends a
    // sweep that runs, with its aComplete. After all but kPicOutput, accepted or not, a sweep needs a new PrepareSweep.
    bool SendFrequency(const QString &letter, int frequency);

private:
    enum class Answer { Accepted, Refused, Missing };

    // Why there is no plan; a port that cannot be opened has been reported already.
    enum class Planless { Refused, PortReported };

    void linkOpened(const LineSettings &line) override;
    void beforeClosing() override;
    void runEnded() override;

    void beginOperation();
    void endOperation(Answer answer);
    Answer prepare();
    Answer sendLetter(const QString &letter, int frequency);
    void startRun();
    Answer ready();
    Answer command(const QByteArray &text);
    // told: what stands between the acceptance and the carriage return; without it nothing may stand there.
    Answer exchange(const QByteArray &text, qint64 patience, QByteArray *told = nullptr);
    bool ask(qint64 patience);
    void askToSettle();
    int sweepPatienceMs() const;
    void abortRun();
    void endRunNow();
    bool resynchronise(qint64 patience);
    bool awaitAborted(qint64 patience);
    bool hearEnd(const QByteArray &bytes);
    Answer sendPlan();
    Answer sendNumber(QLatin1String letter, int hertz);
    void remarkOnce(std::int64_t hertz);
    void onBytes();
    void takeSweeps();
    void awaitSilence(const QByteArray &bytes);
    void onLate();

    SettingsReader m_readSettings;
    PicSettings m_configured;
    int m_baud = 0;
    bool m_asked = false;                 // who the board is, since the port was opened
    int m_settlingUs = kUsualPicSettling; // of the board
    bool m_remarked = false;              // since the port was opened
    std::optional<PicPlan> m_plan;        // accepted, or to be repeated to a board that was plugged in again
    bool m_boardHasPlan = false;
    Planless m_planless = Planless::Refused;
    PicDecoder m_decoder{PicPlan()};
    bool m_exchanging = false;
    bool m_outOfStep = true;         // nobody knows what the board is doing
    bool m_ended = false;            // after an abort: the board has said so
    QByteArray m_heard;              // after an abort: the last bytes
    QByteArray m_afterAnswer;        // what came behind the last answer
    QDeadlineTimer m_deadline;       // of the operation under way
    QElapsedTimer m_sinceUnanswered; // valid: the last operation got no answer, and had this time left
    qint64 m_leftMs = 0;
    QTimer m_start; // G is still to be sent
    QTimer m_late;  // no good sweep, or no end of one
    QTimer m_silence;
};

} // namespace calvorn
