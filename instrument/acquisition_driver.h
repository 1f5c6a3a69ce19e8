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

// What the three drivers share with the rest of the program.
struct DriverContext
{
    Configuration &configuration;
    Log &log;
    ServerProcess &server;
    const SweepTable &table;
    Clock &clock;
};

// What the vectors that come from the server were measured with.
struct VectorPlan
{
    SweepAxis axis;
    std::int16_t mode = 0; // of the MiniVNA; 0 elsewhere

    bool operator==(const VectorPlan &) const = default;
};

// One hardware interface, as the window sees it; the work is done in the acquisition server. Each driver holds all
// that is particular to its interface.
//
// Every operation that calls the server throws RuntimeError(DriverCall) when the call fails; a call that is not
// answered in time is RuntimeError(NoAnswer) and ends the server, because nothing more is to be expected of it. Events
// never arrive inside an operation: they come as window messages.
//
// A vector is passed on only while the plan that the server announced for it is the plan of the table and of the mode
// that the program converts with; every other one is dropped here.
//
// A server that sends events without end, so that the window gets to nothing else, is ended, too; what it has sent
// until then is dropped. Of the text of an error no more than kLongestText characters are taken.
//
// What the hardware refuses is told by refused(); a driver shows nothing.
//
// While a sweep runs the server is asked once a second whether it works. One that does not say yes for three seconds is
// ended, and the error event says so.
class AcquisitionDriver : public QObject
{
    Q_OBJECT

public:
    // What an error event of this interface does to the user.
    enum class ErrorReaction { Ignore, CountSilently, LogOnly, LogAndAsk };
    // What happens to a running sweep when the range changes.
    enum class Replanning { InPlace, StopAndRestart };

    // path: of the driver's object in the server, kLptPath and its neighbours.
    AcquisitionDriver(const DriverContext &context, QString path, QObject *parent);

    // The description of its interface.
    virtual const InterfaceKind &kind() const = 0;

    virtual QString logPrefix() const = 0; // "P> ", "L> " or "V> "
    virtual QString caption() const = 0;   // of the main window

    // Whether the counts of its vectors fall where the detector's voltage rises, see SampleConversion.
    virtual bool countsAreInverted() const { return false; }

    // The auxiliary outputs; null where the hardware has none.
    virtual AuxiliaryOutputs *outputs() { return nullptr; }

    ErrorReaction reactionTo(std::int16_t tipoErrore) const;
    virtual Replanning replanning() const = 0;

    // Opens the port and configures the hardware. A refusal leaves the driver usable. Emits hardwareReady() after
    // success.
    void startUp();

    // The hardware was configured, its server is there, and its port has not been lost since: a detector that is read
    // now says something.
    bool isConfigured() const { return m_settingsSent && !m_portLost && isServerUp(); }

    // The sequence that starts a sweep of the current plan. False: the hardware refused to prepare it.
    // A server that has died is started and configured anew first. Hardware whose port could not be opened at the
    // start-up is configured now: the server opens the port with the sweep.
    virtual bool startSweep();

    // reason: kStopForNewRange or kStopForUser.
    virtual void stopSweep(std::int16_t reason) = 0;

    // Gives a running sweep the current plan. Only for Replanning::InPlace.
    virtual void replanSweep() {}

    // Puts the idle generator on a changed start frequency. Not told by generatorTaken().
    void parkAtChangedStart();

    // After aComplete has been handled.
    virtual void sweepCompleted() {}

    // code: the number of a SweepSpeed. Only the parallel port has speeds.
    virtual void setSpeed(std::int16_t code) { Q_UNUSED(code) }

    // --- generator and modes by hand, from the test panel ---

    // Puts the generator on the start frequency: as an output, and as the start of a sweep.
    virtual void sendFrequency() = 0;
    virtual void sendStartFrequency() { sendFrequency(); }

    // Tells the generator the step of a sweep, where it takes one by itself.
    virtual void sendStepFrequency() {}

    // Brings the generator back to its first state and puts it on kResetFrequency. May block for more than a second.
    virtual void resetGenerator() = 0;

    // What the instrument measures now; empty where it measures one thing only.
    virtual QString modeCaption() const { return {}; }

    // Everything that it can measure, in the order of nextMode().
    virtual QStringList modeCaptions() const { return {}; }

    // Goes from the mode of this caption to the next one, whose caption is returned; any other caption comes back and
    // changes nothing. The instrument hears of it by sendMode().
    virtual QString nextMode(const QString &present) { return present; }
    // Takes the mode at this place of modeCaptions(); the instrument hears of it in the same way.
    virtual void chooseMode(int index) { Q_UNUSED(index) }
    virtual void sendMode() {}

    // --- generator and detector as instruments of their own, while no sweep runs ---

    // Puts the generator on this frequency (Hz). False: the board refused it. A frequency that the hardware cannot
    // give, or a board that does not answer, may be told later, by aErrore().
    bool generate(std::int32_t hertz);
    // Switches the generator's output off, until the next frequency or sweep.
    void silence();

    // Whether the counts say what level there is at the detector.
    virtual bool measuresLevel() const { return true; }

    // Whether the detector can be read while the generator stands still; elsewhere it is read in sweeps only.
    virtual bool readsWithoutSweep() const { return false; }

    // What the converter reads now; for hardware that readsWithoutSweep(). 0 where the port was lost: aErrore() says
    // so.
    virtual int readDetectorCount() { return 0; }

    // For all other hardware: sweeps over 400 Hz around this frequency, or beside it where the limits of the
    // configuration want it so. readingTaken() brings the counts of each, until stopReading() or until any other
    // operation needs the hardware; then comes readingEnded().
    // False: not now. The hardware is not configured, or has not said yet that the last reading has ended.
    bool startReading(std::int32_t hertz);
    void stopReading() { endReading(); }
    bool isReading() const { return m_reading.has_value(); }

    // --- calibration, while no sweep runs ---

    // Whether tryOffset() acts on the hardware at once.
    virtual bool triesOffsets() const { return false; }

    // Parks the generator on the start frequency with this offset in Hz.
    virtual void tryOffset(double hertz) { Q_UNUSED(hertz) }

    // What the detector reads now, in volts, with an offset that is being tried (volts); nothing where the interface
    // delivers readings only while it sweeps. May block for some 50 ms.
    virtual std::optional<double> detectorVolts(double triedOffset, const SweepTable &table)
    {
        Q_UNUSED(triedOffset)
        Q_UNUSED(table)
        return std::nullopt;
    }

    // ----

    // Stops, parks and closes. From here on every operation that would need the server again ends with
    // RuntimeError(Closing), which nobody is shown.
    void shutDown();

signals:
    void aComplete();
    void aErrore(std::int16_t tipoErrore, const QString &descrizione);
    // 400 detector counts for the 400 rows of the table, in their order.
    void aVettore(const QVector<int> &vettore);

    // See startReading(): counts as the converter delivers them.
    void readingTaken(const QVector<int> &counts);
    // byItself: nobody had stopped it.
    void readingEnded(bool byItself);

    // Something other than generate() and silence() has put the generator where it is now: a sweep, a reading, a
    // frequency by hand, a reset, a start of the hardware. Or its server has gone.
    void generatorTaken();

    // A reset has made the board forget its sweep: no aComplete is to be waited for.
    void sweepForgotten();

    // The start-up has got as far as an open port, or not; reason: what the server said, if it said something.
    void portOpened();
    void portRefused(const QString &reason);

    // What the hardware refused, for the user. withBeep: how a fault at the start-up is told.
    void refused(const QString &text, bool withBeep);

    // The instrument measures something else now: modeCaption().
    void modeChanged(const QString &caption);

    // The hardware has just been configured: outputs that the user set are to be restored.
    void hardwareReady();

protected:
    // The start-up of this interface: opens, configures, tells of a refusal; true when all went well.
    virtual bool configureHardware() = 0;

    // Stops, parks and closes, with the server that there is.
    virtual void releaseHardware() = 0;

    // Hands over the settings of the hardware, in the order of the start-up; the port need not be open.
    virtual void sendSettings() {}

    // Prepares and runs; false when the preparation was refused.
    virtual bool runPlan(const SweepAxis &plan) = 0;

    // parkAtChangedStart(), generate() and silence() of this interface.
    virtual void park() = 0;
    virtual bool putGeneratorOn(std::int32_t hertz) = 0;
    virtual void putGeneratorOff() = 0;

    // For each command that moves the generator.
    void generatorCommanded();

    // The mode that the program converts with.
    virtual std::int16_t mode() const { return 0; }

    // A pending call of the operation IsWorking.
    virtual QDBusPendingReply<bool> askWhetherWorking() = 0;

    // The reaction to the codes of the interface itself.
    virtual ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const = 0;

    // Called whenever a server has come up: makes the proxy on this connection.
    virtual void attach(const QDBusConnection &connection, const QString &path) = 0;

    // Brings up a server where there is none and configures the hardware as at start-up.
    void ensureServer();

    // The hardware is wanted for something else.
    void endReading();
    bool isServerUp() const { return m_context.server.isConnected(); }

    // Waits for the answer of a call, at most for the proxy's time-out; the first value written back, if any.
    template <typename... Out>
    auto finish(QDBusPendingReply<Out...> reply)
    {
        reply.waitForFinished();
        if (reply.isError())
            callFailed(reply.error());
        if constexpr (sizeof...(Out) > 0)
            return reply.template argumentAt<0>();
    }

    // The events of the server, as they arrive.
    void serverCompleted();
    void serverFailed(std::int16_t code, const QString &text);
    void serverPlanned(const VectorPlan &plan);
    // False for one that a server has left behind.
    bool takesVector(const QVector<int> &counts);

    // The server is told of every fourth vector that it and the three before it have been taken. It may have twice as
    // many that it was not told of, so it never waits for the fourth, and each of the two programs wakes up less often.
    bool isAcknowledgementDue();

    // Opens the port, a call that fails counting as a refusal, which is told in these words.
    bool tellWhetherOpen(const std::function<bool()> &openPort, const QString &refusal);
    QString serialPortRefusal() const;

    // One step of a shutdown whose errors do not matter; nothing where there is no server any more.
    void ignoringErrors(const std::function<void()> &step);

    // Serial interfaces: a transmission error is only counted, any other goes to the log.
    static ErrorReaction serialReactionTo(std::int16_t tipoErrore);

    Configuration &configuration() const { return m_context.configuration; }
    Log &log() const { return m_context.log; }
    Clock &clock() const { return m_context.clock; }

private:
    // An object may be let go of by its own signal.
    struct DeleteLater
    {
        void operator()(QObject *object) const { object->deleteLater(); }
    };

    static constexpr qsizetype kLongestText = 1000; // characters of what the server says
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
    std::optional<VectorPlan> m_reading;    // of startReading()
    bool m_readingCompletes = false;        // the next aComplete is that of a reading, which may have been stopped
    bool m_commandsGenerator = false;       // by parkAtChangedStart(), generate() or silence()
    bool m_portLost = false;
    int m_takenVectors = 0; // since the server was told
    bool m_attached = false;
    bool m_sweepRuns = false;
    bool m_startingUp = false;
    bool m_closing = false;
    bool m_endedByTimeout = false;
    bool m_endedByWatch = false;
    bool m_endedByFlood = false;
    QElapsedTimer m_turn;                                             // since the window last had its turn
    int m_eventsInTurn = 0;                                           // of the server
    QElapsedTimer m_second;                                           // the one in which news are counted
    int m_newsInSecond = 0;                                           // ends and errors but those of the transfer
    bool m_settingsSent = false;                                      // to this server
    QTimer m_watch;                                                   // while a sweep runs
    std::unique_ptr<QDBusPendingCallWatcher, DeleteLater> m_question; // IsWorking
    int m_unanswered = 0;                                             // ticks since it was asked
};

// Around the frequency at which the detector is read in sweeps, Hz.
inline constexpr std::int32_t kReadingSpan = kSweepPoints;

// Where a reset leaves the generator, Hz.
inline constexpr std::int32_t kResetFrequency = 1000000;

} // namespace calvorn
