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

// Implements the calvorn.Pic interface (protocol/calvorn.Pic.xml, docs/hardware/pic-board.md). The generated adaptor
// calls the operations on the main thread. A command waits up to 0.5 s for its reply, and is sent once more after the
// line has been cleared; every operation returns within 1.9 s. If the board does not reply, all operations started by
// one click together take 1.9 s. Sweeps are started and driven by events.
//
// A sweep runs only with a plan that the board has accepted, and its vectors are labelled with that plan: a frame that
// the board measured with a different plan is treated as damaged.
//
// Before the first command, the driver requests the board's identity. If the settings specify a settling time, it is
// sent before each plan.
//
// Errors: Transmission for a damaged sweep (not shown; the sweep continues); Board if a command gets no reply, no more
// valid sweeps are received or the board refuses to sweep; Port if the port cannot be opened, is not open or was lost;
// Setting for an unknown command or an unsupported settling time; Ignorable, once each, if a frequency is too high for
// the generator and if the board's generator differs from the settings.
class PicDriver : public SerialDriver
{
    Q_OBJECT

public:
    // Called when the port is opened.
    using SettingsReader = std::function<PicSettings()>;

    PicDriver(LinkOpener opener, SettingsReader readSettings, QObject *parent = nullptr);

public slots:
    // Stops the sweep; aComplete follows when the board is silent. Does nothing if no sweep is running.
    void StopSweep(short reason);

    // Starts a sweep and returns immediately; vectors follow until it is stopped. Without an accepted plan, or if the
    // board does not start, only aComplete follows. Opens the port if it is not open.
    void RunSweep();

    // Sets start and step in Hz. Returns false if the board rejects them or does not reply, or if a sweep is running.
    bool PrepareSweep(int start, int step);

    // Sends a letter from protocol/pic_commands.h with the frequency in Hz (none for a reset). Returns false under the
    // same conditions as PrepareSweep, but a reset ends a running sweep and emits its aComplete. After every letter
    // except kPicOutput, even a rejected one, a sweep needs a new PrepareSweep.
    bool SendFrequency(const QString &letter, int frequency);

private:
    enum class Answer { Accepted, Refused, Missing };

    // The reason for a missing plan. PortReported: the port could not be opened, and the error has been reported.
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
    // details: receives the text between "+" and the carriage return; if nullptr, there must be no such text.
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
    bool m_identityRequested = false;     // already requested since the port was opened
    int m_settlingUs = kUsualPicSettling; // the board's current settling time
    bool m_remarked = false;              // reported an excessive frequency since the port was opened
    std::optional<PicPlan> m_plan;        // accepted by the board, or to be sent again after a reconnection
    bool m_boardHasPlan = false;
    Planless m_planless = Planless::Refused;
    PicDecoder m_decoder{PicPlan()};
    bool m_exchanging = false;
    bool m_outOfStep = true;         // the board's state is unknown
    bool m_ended = false;            // after an abort: the board has confirmed it
    QByteArray m_heard;              // after an abort: the last bytes received
    QByteArray m_afterAnswer;        // bytes received after the last reply
    QDeadlineTimer m_deadline;       // for the current operation
    QElapsedTimer m_sinceUnanswered; // valid if the last operation got no reply; m_leftMs is the time it had left
    qint64 m_leftMs = 0;
    QTimer m_start; // starts the sweep from the event loop
    QTimer m_late;  // the next valid sweep, or the confirmation of an abort, is overdue
    QTimer m_silence;
};

} // namespace calvorn
