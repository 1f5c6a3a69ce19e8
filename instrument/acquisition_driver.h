// SPDX-License-Identifier: MIT
#pragma once

#include "core/log.h"
#include "data/sweep_table.h"
#include "instrument/interface_kind.h"
#include "instrument/server_process.h"
#include "platform/clock.h"
#include "protocol/error_codes.h"
#include "protocol/server_start.h"
#include "protocol/stop_reasons.h"
#include "protocol/vector_window.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

namespace calvorn {

class AuxiliaryOutputs;

// The objects that every driver uses.
struct DriverContext
{
    Configuration &configuration;
    Log &log;
    ServerProcess &server;
    const SweepTable &table;
    Clock &clock;
};

// The plan and mode that the server used to measure its vectors.
struct VectorPlan
{
    SweepAxis axis;
    std::int16_t mode = 0; // MiniVNA: its mode; 0 for the other interfaces

    bool operator==(const VectorPlan &) const = default;
};

// One hardware interface from the window's point of view; the acquisition server does the actual work. Each driver
// contains everything specific to its interface.
//
// Every operation that calls the server throws RuntimeError(DriverCall) when the call fails. A call without an answer
// in time throws RuntimeError(NoAnswer) and ends the server, which is assumed to hang. Events never arrive during an
// operation: they come from the event loop.
//
// A vector is emitted only while the plan that the server announced for it matches the table and the current mode; all
// other vectors are dropped.
//
// A server that floods the window with events, so that the window cannot react, is also ended, and its pending events
// are dropped. Error texts are truncated to kLongestText characters.
//
// refused() reports what the hardware refuses; a driver never shows a message itself.
//
// During a sweep, the driver asks the server once a second whether it works. A server that says no, or that does not
// answer for three seconds, is ended, and an error event reports this.
class AcquisitionDriver : public QObject
{
    Q_OBJECT

public:
    // How the program reacts to an error event of this interface.
    enum class ErrorReaction { Ignore, CountSilently, LogOnly, LogAndAsk };
    // What happens to a running sweep when the range changes.
    enum class Replanning { InPlace, StopAndRestart };

    // path: the path of the driver's object in the server, such as kLptPath.
    AcquisitionDriver(const DriverContext &context, QString path, QObject *parent);

    // The description of this interface.
    virtual const InterfaceKind &kind() const = 0;

    virtual QString logPrefix() const = 0; // "P> ", "L> " or "V> "
    virtual QString caption() const = 0;   // of the main window

    // Returns true if the counts fall as the detector's voltage rises; see SampleConversion.
    virtual bool countsAreInverted() const { return false; }

    // Returns the auxiliary outputs, or null if the hardware has none.
    virtual AuxiliaryOutputs *outputs() { return nullptr; }

    ErrorReaction reactionTo(std::int16_t tipoErrore) const;
    virtual Replanning replanning() const = 0;

    // Opens the port and configures the hardware. After a refusal the driver remains usable. Emits hardwareReady() on
    // success.
    void startUp();

    // Returns true if the hardware was configured, its server runs and its port has not been lost since: a reading of
    // the detector is then valid.
    bool isConfigured() const { return m_settingsSent && !m_portLost && isServerUp(); }

    // Starts a sweep of the current plan. Returns false if the hardware refused to prepare it. First restarts and
    // configures a server that has died. Hardware whose port could not be opened at start-up is configured now: the
    // server opens the port with the sweep.
    virtual bool startSweep();

    // reason: kStopForNewRange or kStopForUser.
    virtual void stopSweep(std::int16_t reason) = 0;

    // Applies the current plan to a running sweep. Only for Replanning::InPlace.
    virtual void replanSweep() {}

    // Moves the idle generator to a changed start frequency. Does not emit generatorTaken().
    void parkAtChangedStart();

    // Called after aComplete has been handled.
    virtual void sweepCompleted() {}

    // code: the number of a SweepSpeed. Only the parallel port has speeds.
    virtual void setSpeed(std::int16_t code) { Q_UNUSED(code) }

    // --- manual control of generator and modes, from the test panel ---

    // Send the start frequency: sendFrequency() sets the output to it, sendStartFrequency() the start of a sweep.
    virtual void sendFrequency() = 0;
    virtual void sendStartFrequency() { sendFrequency(); }

    // Sends the step of a sweep, on hardware with a separate command for it.
    virtual void sendStepFrequency() {}

    // Resets the generator and sets it to kResetFrequency. May block for more than a second.
    virtual void resetGenerator() = 0;

    // Caption of the current measuring mode; empty if the instrument has only one.
    virtual QString modeCaption() const { return {}; }

    // Captions of all measuring modes, in the order of nextMode().
    virtual QStringList modeCaptions() const { return {}; }

    // Selects the mode after the one with this caption and returns its caption. Returns an unknown caption unchanged
    // and selects nothing. The instrument receives the mode with sendMode().
    virtual QString nextMode(const QString &present) { return present; }
    // Selects the mode at this index of modeCaptions(); the instrument receives it with sendMode().
    virtual void chooseMode(int index) { Q_UNUSED(index) }
    virtual void sendMode() {}

    // --- generator and detector as separate instruments, while no sweep runs ---

    // Sets the generator to this frequency (Hz). Returns false if the board refused it. A frequency that the hardware
    // cannot generate, or a board that does not answer, may be reported later, by aErrore().
    bool generate(std::int32_t hertz);
    // Switches the generator's output off until the next frequency or sweep.
    void silence();

    // Returns true if the counts represent the level at the detector.
    virtual bool measuresLevel() const { return true; }

    // Returns true if the detector can be read without moving the generator; otherwise it is read only in sweeps.
    virtual bool readsWithoutSweep() const { return false; }

    // Returns a reading of the converter; only for hardware with readsWithoutSweep(). Returns 0 if the port was lost,
    // which aErrore() reports.
    virtual int readDetectorCount() { return 0; }

    // For all other hardware: sweeps over 400 Hz around this frequency, shifted if necessary to stay within the
    // configured limits. readingTaken() delivers the counts of each sweep, until stopReading() or until another
    // operation needs the hardware; readingEnded() follows.
    // Returns false if this is not possible now: the hardware is not configured, or has not yet confirmed the end of
    // the last reading.
    bool startReading(std::int32_t hertz);
    void stopReading() { endReading(); }
    bool isReading() const { return m_reading.has_value(); }

    // --- calibration, while no sweep runs ---

    // Returns true if tryOffset() affects the hardware at once.
    virtual bool triesOffsets() const { return false; }

    // Sets the generator to the start frequency, with this offset in Hz.
    virtual void tryOffset(double hertz) { Q_UNUSED(hertz) }

    // Returns the detector's current voltage with a trial offset (volts), or nothing if the interface delivers readings
    // only while it sweeps. May block for about 50 ms.
    virtual std::optional<double> detectorVolts(double triedOffset, const SweepTable &table)
    {
        Q_UNUSED(triedOffset)
        Q_UNUSED(table)
        return std::nullopt;
    }

    // ----

    // Stops the sweep, parks the generator and closes the port. After this call, every operation that would need the
    // server throws RuntimeError(Closing), which is never shown.
    void shutDown();

signals:
    void aComplete();
    void aErrore(std::int16_t tipoErrore, const QString &descrizione);
    // 400 detector counts, in the order of the 400 rows of the table.
    void aVettore(const QVector<int> &vettore);

    // See startReading(). counts: as received from the converter.
    void readingTaken(const QVector<int> &counts);
    // byItself: the reading ended without stopReading().
    void readingEnded(bool byItself);

    // The generator may have another frequency or state now: through a sweep, a reading, manual control, a reset or a
    // start of the hardware, or because its server has ended. Not emitted for generate() and silence().
    void generatorTaken();

    // A reset has cancelled the board's sweep: no aComplete will follow.
    void sweepForgotten();

    // The result of opening the port during start-up; reason: the server's message, if any.
    void portOpened();
    void portRefused(const QString &reason);

    // The hardware refused an operation. text: message for the user. withBeep: true for faults during start-up.
    void refused(const QString &text, bool withBeep);

    // The measuring mode has changed. caption: modeCaption().
    void modeChanged(const QString &caption);

    // The hardware has just been configured: the outputs that the user set must be restored.
    void hardwareReady();

protected:
    // The start-up of this interface: opens the port, configures the hardware and reports a refusal. Returns true on
    // success.
    virtual bool configureHardware() = 0;

    // Stops the sweep, parks the generator and closes the port, without starting a server.
    virtual void releaseHardware() = 0;

    // Sends the hardware settings, in start-up order; the port need not be open.
    virtual void sendSettings() {}

    // Prepares and runs a sweep. Returns false when the preparation was refused.
    virtual bool runPlan(const SweepAxis &plan) = 0;

    // Implement parkAtChangedStart(), generate() and silence() for this interface.
    virtual void park() = 0;
    virtual bool putGeneratorOn(std::int32_t hertz) = 0;
    virtual void putGeneratorOff() = 0;

    // Must be called for each command that moves the generator.
    void generatorCommanded();

    // The mode that the program uses for conversion.
    virtual std::int16_t mode() const { return 0; }

    // Returns a pending call of the operation IsWorking.
    virtual QDBusPendingReply<bool> askWhetherWorking() = 0;

    // Returns the reaction to the error codes of this interface.
    virtual ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const = 0;

    // Called whenever a server has started: creates the proxy on this connection.
    virtual void attach(const QDBusConnection &connection, const QString &path) = 0;

    // Starts a server if none is running, and configures the hardware as at start-up.
    void ensureServer();

    // Ends a reading because another operation needs the hardware.
    void endReading();
    bool isServerUp() const { return m_context.server.isConnected(); }

    // Waits for the answer to a call, at most for the proxy's time-out. Returns the first output value, if any.
    template <typename... Out>
    auto finish(QDBusPendingReply<Out...> reply)
    {
        reply.waitForFinished();
        if (reply.isError())
            callFailed(reply.error());
        if constexpr (sizeof...(Out) > 0)
            return reply.template argumentAt<0>();
    }

    // Handlers of the server's events.
    void serverCompleted();
    void serverFailed(std::int16_t code, const QString &text);
    void serverPlanned(const VectorPlan &plan);
    // Returns false for a vector of a server that has ended.
    bool takesVector(const QVector<int> &counts);

    // Returns true for every fourth vector: the program acknowledges four vectors at a time, which wakes both programs
    // up less often. The server allows eight unacknowledged vectors, so it need not wait.
    bool isAcknowledgementDue();

    // Opens the port. On failure, also of the call itself, reports this refusal and returns false.
    bool openOrRefuse(const std::function<bool()> &openPort, const QString &refusal);
    QString serialPortRefusal() const;

    // Performs one step of a shutdown and only logs its errors. Does nothing without a server.
    void ignoringErrors(const std::function<void()> &step);

    // For serial interfaces: transmission errors are only counted, all others are logged.
    static ErrorReaction serialReactionTo(std::int16_t tipoErrore);

    Configuration &configuration() const { return m_context.configuration; }
    Log &log() const { return m_context.log; }
    Clock &clock() const { return m_context.clock; }

private:
    // deleteLater(), because an object may be released in its own signal.
    struct DeleteLater
    {
        void operator()(QObject *object) const { object->deleteLater(); }
    };

    static constexpr qsizetype kLongestText = 1000; // length of the server's texts
    static QString bounded(const QString &text);

    [[noreturn]] void callFailed(const QDBusError &error);
    bool isOfTablePlan() const;
    bool takesEvents();
    bool takesNews();
    void serverEnded();
    void sweepBegun();
    void sweepEnded();
    void watchEnds();
    void watchServer();
    void serverHangs();
    void serverFloods();

    DriverContext m_context;
    QString m_path;
    std::optional<VectorPlan> m_vectorPlan; // as announced by the server
    std::optional<VectorPlan> m_reading;    // from startReading()
    bool m_readingCompletes = false;        // the next aComplete belongs to a reading, which may have been stopped
    bool m_commandsGenerator = false;       // the command comes from parkAtChangedStart(), generate() or silence()
    bool m_portLost = false;
    int m_takenVectors = 0; // since the last acknowledgement
    bool m_attached = false;
    bool m_sweepRuns = false;
    bool m_startingUp = false;
    bool m_closing = false;
    bool m_endedByTimeout = false;
    bool m_endedByWatch = false;
    bool m_endedByFlood = false;
    QElapsedTimer m_turn;        // since the event loop last woke up
    int m_eventsInTurn = 0;      // number of server events since then
    QElapsedTimer m_second;      // the second in which news are counted
    int m_newsInSecond = 0;      // sweep ends and errors, except transmission errors
    bool m_settingsSent = false; // to the current server
    QTimer m_watch;              // runs during a sweep
    std::unique_ptr<QDBusPendingCallWatcher, DeleteLater> m_question; // the pending IsWorking call
    int m_unanswered = 0;                                             // ticks since the call
};

// Width in Hz of the sweeps that read the detector.
inline constexpr std::int32_t kReadingSpan = kSweepPoints;

// The generator's frequency after a reset, in Hz.
inline constexpr std::int32_t kResetFrequency = 1000000;

} // namespace calvorn
