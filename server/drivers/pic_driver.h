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

// Implements the interface calvorn.Pic (protocol/calvorn.Pic.xml, docs/hardware/pic-board.md). The operations arrive on
// the main thread, through the generated adaptor. A command waits at most 0.5 s for its answer, and once more after the
// line has been cleared; every operation returns within 1.9 s. If the board does not answer, all operations of one
// click together take 1.9 s. Sweeps are started and driven by events.
//
// A sweep runs only with a plan that the board has accepted, and its vectors carry that plan: a frame that the board
// swept with another plan counts as damaged.
//
// The driver asks the board for its identity before the first command. If the settings contain a settling time, it is
// sent before each plan.
//
// Errors: Transmission for a damaged sweep (not shown; the sweep goes on), Board when a command gets no answer, when
// good sweeps stop arriving or when the board refuses to sweep, Port when the port cannot be opened, is not open or was
// lost, Setting for an unknown command or a settling time that the board refuses, Ignorable once when a frequency is
// too high for the generator, or when the board's generator differs from the settings.
class PicDriver : public SerialDriver
{
    Q_OBJECT

public:
    // Called when the port is opened.
    using SettingsReader = std::function<PicSettings()>;

    PicDriver(LinkOpener opener, SettingsReader readSettings, QObject *parent = nullptr);

public slots:
    // Stops the sweep; aComplete follows when the board is silent. Does nothing when no sweep runs.
    void StopSweep(short reason);

    // Returns at once; vectors follow until the sweep is stopped. Without an accepted plan, or if the board does not
    // start, only aComplete follows. Opens the port if it is not open.
    void RunSweep();

    // Sets start (Hz) and step (Hz). Returns false when the board refuses or does not answer, and while a sweep runs.
    bool PrepareSweep(int start, int step);

    // Sends a letter of protocol/pic_commands.h with the frequency in Hz (a reset has none). Returns false like
    // PrepareSweep; a reset ends a running sweep, with its aComplete. After every letter except kPicOutput, even if
    // refused, a sweep needs a new PrepareSweep.
    bool SendFrequency(const QString &letter, int frequency);

private:
    enum class Answer { Accepted, Refused, Missing };

    // Why there is no plan. PortReported: the port could not be opened, which has already been reported.
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
    // details: receives the text between the acceptance and the carriage return; if nullptr, that text must be empty.
    Answer exchange(const QByteArray &text, qint64 patience, QByteArray *details = nullptr);
    bool identify(qint64 patience);
    void sendSettlingTime();
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
    bool m_identityRequested = false;     // the identity was requested since the port was opened
    int m_settlingUs = kUsualPicSettling; // the board's current settling time
    bool m_remarked = false;              // since the port was opened
    std::optional<PicPlan> m_plan;        // accepted by the board, or to be sent again after a reconnection
    bool m_boardHasPlan = false;
    Planless m_planless = Planless::Refused;
    PicDecoder m_decoder{PicPlan()};
    bool m_exchanging = false;
    bool m_outOfStep = true;         // the board's state is unknown
    bool m_ended = false;            // after an abort: the board has confirmed it
    QByteArray m_heard;              // after an abort: the last bytes received
    QByteArray m_afterAnswer;        // bytes received after the last answer
    QDeadlineTimer m_deadline;       // of the current operation
    QElapsedTimer m_sinceUnanswered; // valid if the last operation got no answer; m_leftMs is the time it had left
    qint64 m_leftMs = 0;
    QTimer m_start; // starts the sweep from the event loop
    QTimer m_late;  // no good sweep arrives, or no end of one
    QTimer m_silence;
};

} // namespace calvorn
