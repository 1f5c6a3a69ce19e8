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
// Every operation that calls the server throws RuntimeError(DriverCall) if the call fails. A call that times out throws
// RuntimeError(NoAnswer) and terminates the server, which is assumed to hang. Events never arrive during an operation,
// because only the event loop delivers them.
//
// A vector is emitted only if the plan that the server announced for it matches the table and the current mode; all
// other vectors are discarded.
//
// A server that sends so many events that the window cannot respond is also terminated, and its pending events are
// discarded. Error messages are truncated to kLongestText characters.
//
// refused() reports operations that the hardware rejects; a driver never shows a message itself.
//
// During a sweep, the driver calls IsWorking in the server once a second. A server that returns false, or does not
// answer for three seconds, is terminated, and an error event reports this.
class AcquisitionDriver : public QObject
{
    Q_OBJECT

public:
    // How the program reacts to an error event from this interface.
    enum class ErrorReaction { Ignore, CountSilently, LogOnly, LogAndAsk };
    // What happens to a running sweep when the range changes.
    enum class Replanning { InPlace, StopAndRestart };

    // path: the path of the driver's object in the server, such as kLptPath.
    AcquisitionDriver(const DriverContext &context, QString path, QObject *parent);

    // The description of this interface.
    virtual const InterfaceKind &kind() const = 0;

    virtual QString logPrefix() const = 0; // "P> ", "L> " or "V> "
    virtual QString caption() const = 0;   // title of the main window

    // Returns true if the counts fall as the detector's voltage rises; see SampleConversion.
    virtual bool countsAreInverted() const { return false; }

    // Returns the auxiliary outputs, or null if the hardware has none.
    virtual AuxiliaryOutputs *outputs() { return nullptr; }

    ErrorReaction reactionTo(std::int16_t tipoErrore) const;
    virtual Replanning replanning() const = 0;

    // Opens the port and configures the hardware. Emits hardwareReady() on success. The driver remains usable after a
    // failure.
    void startUp();

    // Returns true if the hardware has been configured, the server is running and the port has not been lost since.
    // Detector readings are valid only then.
    bool isConfigured() const { return m_settingsSent && !m_portLost && isServerUp(); }

    // Starts a sweep with the current plan. Returns false if the hardware rejects the plan. First restarts and
    // configures a server that has died. Also configures hardware whose port could not be opened at start-up: the
    // server opens the port when the sweep starts.
    virtual bool startSweep();

    // reason: kStopForNewRange or kStopForUser.
    virtual void stopSweep(std::int16_t reason) = 0;

    // Applies the current plan to a running sweep. Only for Replanning::InPlace.
    virtual void replanSweep() {}

    // Sets the idle generator to a changed start frequency. Does not emit generatorTaken().
    void parkAtChangedStart();

    // Called after aComplete has been handled.
    virtual void sweepCompleted() {}

    // code: the numeric value of a SweepSpeed. Only the parallel-port interface supports speeds.
    virtual void setSpeed(std::int16_t code) { Q_UNUSED(code) }

    // --- manual control of generator and modes from the test panel ---

    // Send the start frequency: sendFrequency() as the output frequency, sendStartFrequency() as the start of a sweep.
    virtual void sendFrequency() = 0;
    virtual void sendStartFrequency() { sendFrequency(); }

    // Sends the sweep step to hardware that has a separate command for it.
    virtual void sendStepFrequency() {}

    // Resets the generator and sets it to kResetFrequency. May block for more than a second.
    virtual void resetGenerator() = 0;

    // Returns the caption of the current measuring mode, or an empty string if the instrument has only one mode.
    virtual QString modeCaption() const { return {}; }

    // Returns the captions of all measuring modes in nextMode() order.
    virtual QStringList modeCaptions() const { return {}; }

    // Selects the mode that follows the mode with this caption and returns its caption. If the caption is unknown,
    // selects nothing and returns it unchanged. sendMode() then sends the mode to the instrument.
    virtual QString nextMode(const QString &present) { return present; }
    // Selects the mode at this index in modeCaptions(); sendMode() then sends it to the instrument.
    virtual void chooseMode(int index) { Q_UNUSED(index) }
    virtual void sendMode() {}

    // --- generator and detector as separate instruments, while no sweep is running ---

    // Sets the generator to this frequency (Hz). Returns false if the board rejects it. A frequency that the hardware
    // cannot generate, or a board that does not answer, may be reported later by aErrore().
    bool generate(std::int32_t hertz);
    // Switches the generator's output off until the next frequency or sweep.
    void silence();

    // Returns true if the counts represent the detector level.
    virtual bool measuresLevel() const { return true; }

    // Returns true if the detector can be read without retuning the generator; otherwise it is read only in sweeps.
    virtual bool readsWithoutSweep() const { return false; }

    // Returns a converter reading; only for hardware with readsWithoutSweep(). If the port has been lost, returns 0;
    // aErrore() reports the loss.
    virtual int readDetectorCount() { return 0; }

    // For all other hardware: sweeps a 400 Hz range around this frequency, shifted if necessary to stay within the
    // configured limits. readingTaken() delivers the counts of each sweep until stopReading() is called or another
    // operation needs the hardware; readingEnded() follows.
    // Returns false if the hardware is not configured or has not yet confirmed the end of the last reading.
    bool startReading(std::int32_t hertz);
    void stopReading() { endReading(); }
    bool isReading() const { return m_reading.has_value(); }

    // --- calibration, while no sweep is running ---

    // Returns true if tryOffset() takes effect immediately.
    virtual bool triesOffsets() const { return false; }

    // Sets the generator to the start frequency with this offset (Hz).
    virtual void tryOffset(double hertz) { Q_UNUSED(hertz) }

    // Returns the current detector voltage with a trial offset (volts), or nothing if the interface reads the detector
    // only during sweeps. May block for about 50 ms.
    virtual std::optional<double> detectorVolts(double triedOffset, const SweepTable &table)
    {
        Q_UNUSED(triedOffset)
        Q_UNUSED(table)
        return std::nullopt;
    }

    // ----

    // Stops the sweep, parks the generator and closes the port. After this call, an operation that would have to start
    // the server throws RuntimeError(Closing), which is never shown to the user.
    void shutDown();

signals:
    void aComplete();
    void aErrore(std::int16_t tipoErrore, const QString &descrizione);
    // vettore: 400 detector counts in table row order.
    void aVettore(const QVector<int> &vettore);

    // See startReading(). counts: as received from the converter.
    void readingTaken(const QVector<int> &counts);
    // byItself: true if the board or the server ended the reading.
    void readingEnded(bool byItself);

    // The generator's frequency or state may have changed because of a sweep, a reading, manual control, a hardware
    // reset or start-up, or because the server has exited. Not emitted for generate() and silence().
    void generatorTaken();

    // A reset has cancelled the board's sweep, so no aComplete will follow.
    void sweepForgotten();

    // Report the result of opening the port during start-up. reason: the server's message, if any.
    void portOpened();
    void portRefused(const QString &reason);

    // The hardware rejected an operation. text: message for the user. withBeep: true for errors during start-up.
    void refused(const QString &text, bool withBeep);

    // The measuring mode has changed. caption: modeCaption().
    void modeChanged(const QString &caption);

    // The hardware has just been configured; the user's output settings must now be restored.
    void hardwareReady();

protected:
    // Implements startUp() for this interface: opens the port, configures the hardware and reports any failure. Returns
    // true on success.
    virtual bool configureHardware() = 0;

    // Stops the sweep, parks the generator and closes the port, without starting a server.
    virtual void releaseHardware() = 0;

    // Sends the hardware settings in start-up order; the port need not be open.
    virtual void sendSettings() {}

    // Prepares and runs a sweep. Returns false if the hardware rejects the plan.
    virtual bool runPlan(const SweepAxis &plan) = 0;

    // Implement parkAtChangedStart(), generate() and silence() for this interface.
    virtual void park() = 0;
    virtual bool putGeneratorOn(std::int32_t hertz) = 0;
    virtual void putGeneratorOff() = 0;

    // Must be called for each command that retunes the generator.
    void generatorCommanded();

    // Returns the mode that the program uses to convert counts.
    virtual std::int16_t mode() const { return 0; }

    // Calls IsWorking and returns the pending reply.
    virtual QDBusPendingReply<bool> askWhetherWorking() = 0;

    // Implements reactionTo() for this interface's error codes.
    virtual ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const = 0;

    // Creates the proxy on this connection. Called after each server start.
    virtual void attach(const QDBusConnection &connection, const QString &path) = 0;

    // Starts a server if none is running, and configures the hardware as at start-up.
    void ensureServer();

    // Ends a reading because another operation needs the hardware.
    void endReading();
    bool isServerUp() const { return m_context.server.isConnected(); }

    // Waits for the reply to a call, but no longer than the proxy's time-out. Returns the first output value, if any.
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
    // Returns false for a vector from a server that has exited.
    bool takesVector(const QVector<int> &counts);

    // Returns true for every fourth vector: acknowledging four vectors at a time wakes both programs less often. The
    // server allows eight unacknowledged vectors, so it does not have to wait.
    bool isAcknowledgementDue();

    // Calls openPort. If it returns false or throws RuntimeError, reports this refusal and returns false.
    bool openOrRefuse(const std::function<bool()> &openPort, const QString &refusal);
    QString serialPortRefusal() const;

    // Runs one shutdown step and only logs its errors. Does nothing if no server is running.
    void ignoringErrors(const std::function<void()> &step);

    // For serial interfaces: transmission errors are only counted, all others are logged.
    static ErrorReaction serialReactionTo(std::int16_t tipoErrore);

    Configuration &configuration() const { return m_context.configuration; }
    Log &log() const { return m_context.log; }
    Clock &clock() const { return m_context.clock; }

private:
    // Calls deleteLater(), because a handler of the object's own signal may release the object.
    struct DeleteLater
    {
        void operator()(QObject *object) const { object->deleteLater(); }
    };

    static constexpr qsizetype kLongestText = 1000; // maximum length of the server's messages
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
    bool m_readingCompletes = false;        // the next aComplete belongs to a reading, possibly one already stopped
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
    QElapsedTimer m_second;      // since m_newsInSecond was last reset
    int m_newsInSecond = 0;      // completed sweeps and errors, except transmission errors
    bool m_settingsSent = false; // to the current server
    QTimer m_watch;              // runs during a sweep
    std::unique_ptr<QDBusPendingCallWatcher, DeleteLater> m_question; // the pending IsWorking call
    int m_unanswered = 0;                                             // ticks since the call
};

// Range (Hz) of a sweep that reads the detector.
inline constexpr std::int32_t kReadingSpan = kSweepPoints;

// Generator frequency after a reset (Hz).
inline constexpr std::int32_t kResetFrequency = 1000000;

} // namespace calvorn
