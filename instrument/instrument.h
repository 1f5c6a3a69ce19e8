// SPDX-License-Identifier: MIT
#pragma once

#include "core/log.h"
#include "data/sweep_table.h"
#include "instrument/acquisition_driver.h"
#include "instrument/sample_conversion.h"
#include "instrument/server_process.h"
#include "platform/clock.h"

#include <QEventLoop>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <utility>

namespace calvorn {

// How long a sweep goes on: again and again until it is stopped, or until one vector is stored.
enum class SweepRun { UntilStopped, Once };

// How takeSweeps() ended, with the reason in words where there is one.
struct SweepOutcome
{
    enum class Kind {
        Done,
        PortRefused, // the port could not be opened
        PortLost,    // the port failed while it was in use
        SetUpRefused,
        SweepRefused,
        NoAnswer, // no sweep in time, or a board that does not answer
        Failed,   // an error that the hardware or the conversion raised
        Interrupted
    };

    Kind kind = Kind::Done;
    QString reason;
};

// The measuring instrument: the driver of the configured interface, the acquisition server behind it, the table of the
// last sweep, and the conversion in between. It shows nothing: results are returned, and events are raised. The window,
// calvorn-sweep and whatever controls it from afar stand on it.
//
// One sweep at a time. It is idle, or sweeping from startSweep() until the driver's aComplete.
class Instrument : public QObject
{
    Q_OBJECT

public:
    // Values of sweepState().
    static constexpr std::int16_t kIdle = 0;
    static constexpr std::int16_t kSweeping = 4;

    // serverProgram: the acquisition server; it is told the settings file.
    Instrument(Configuration &configuration, Log &log, Clock &clock, const QString &serverProgram,
               const QString &settingsFile, QObject *parent = nullptr);
    ~Instrument() override;

    SweepTable &table() { return m_table; }
    const SweepTable &table() const { return m_table; }
    SampleConversion &conversion() { return m_conversion; }
    ServerProcess &server() { return m_server; }

    // --- connect ---

    // Lets the server come up, so that it is there by the time that connectHardware() needs it.
    void launchServer() { m_server.launch(); }

    // Makes the driver of the configured interface. False: the interface has none.
    bool makeDriver();
    // A driver of another make, in place of the configured one.
    template <typename Driver, typename... Arguments>
    Driver &useDriver(Arguments &&...arguments)
    {
        auto driver = std::make_unique<Driver>(context(), std::forward<Arguments>(arguments)...);
        Driver &made = *driver;
        adopt(std::move(driver));
        return made;
    }
    // Null until then.
    AcquisitionDriver *driver() const { return m_driver.get(); }
    // RuntimeError(NoDriver) where there is none.
    AcquisitionDriver &requiredDriver() const;

    // Opens the port and configures the hardware, the stored auxiliary outputs included. Refusals come as events of the
    // driver. RuntimeError(NoDriver) without a driver.
    void connectHardware();

    // --- range ---

    // Takes a range (Hz) into the record, corrected where it is too small, and plans it: step and empty table. True: it
    // was corrected; the record's startNotice and stopNotice say how.
    bool planRange(std::int32_t start, std::int32_t stop);

    // --- sweep ---

    std::int16_t sweepState() const { return m_sweepState; }
    bool isSweeping() const { return m_sweepState != kIdle; }

    // Starts a sweep of the current plan. False: the hardware refused to prepare it. RuntimeError when it could not be
    // started; it is idle then. It must have been idle.
    bool startSweep(SweepRun run = SweepRun::UntilStopped);

    // How the last sweep was started, or has been told to go on since.
    SweepRun run() const { return m_run; }

    // Lets a running sweep end after the next vector.
    void endAfterNextVector();

    // The one vector of a single sweep is stored, and the hardware has still to say that it has stopped.
    bool isEnding() const { return isSweeping() && isSingleDone(); }

    // reason: 1 = the range changed during a sweep, 2 = stop requested by the user. The sweep ends with aComplete.
    void stopSweep(std::int16_t reason = 2);

    // A vector of the driver into the table. The vector of a single sweep stops the sweep; vectors that were still on
    // their way are dropped. RuntimeError when it cannot be converted, or when the sweep cannot be stopped.
    void store(const QVector<int> &vector);

    // Connects, takes this many sweeps, and shuts the hardware down. For callers without a window: it waits, in an
    // event loop of its own. isInterrupted is asked every 50 ms. vectorStored() tells of each sweep, told() what else a
    // user may want to know.
    SweepOutcome takeSweeps(int count, const std::function<bool()> &isInterrupted);

    // Stops, parks and closes. The server ends.
    void shutDown();

signals:
    // driver() is another one now, or the first.
    void driverMade();
    // takeSweeps() has connected the hardware, and starts to sweep.
    void connected();
    // A sweep is about to start.
    void sweepStarts();
    // The sweep has ended, or was forgotten by the board.
    void becameIdle();
    // One of the sweeps of takeSweeps() was damaged; the next one comes.
    void told(const QString &text);

private:
    DriverContext context();
    void adopt(std::unique_ptr<AcquisitionDriver> driver);
    bool isSingleDone() const { return m_run == SweepRun::Once && m_singleStored; }
    void becomeIdle();
    void restoreStoredOutputs();
    SweepOutcome take(int count, const std::function<bool()> &isInterrupted);
    bool connectTelling(SweepOutcome &outcome);
    void hardwareFailed(std::int16_t code, const QString &text, SweepOutcome &outcome, QEventLoop &wait);
    void waitForSweeps(const int &taken, const std::function<bool()> &isInterrupted, QEventLoop &wait);

    Configuration &m_configuration;
    Log &m_log;
    Clock &m_clock;
    ServerProcess m_server;
    SweepTable m_table;
    SampleConversion m_conversion;
    std::unique_ptr<AcquisitionDriver> m_driver;
    std::int16_t m_sweepState = kIdle;
    SweepRun m_run = SweepRun::UntilStopped;
    bool m_singleStored = false;
};

} // namespace calvorn
