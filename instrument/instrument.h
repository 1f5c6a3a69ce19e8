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

// Determines when a sweep ends: when the user stops it, or after one stored vector.
enum class SweepRun { UntilStopped, Once };

// The result of takeSweeps(), with an explanation if one is available.
struct SweepOutcome
{
    enum class Kind {
        Done,
        PortRefused, // the port could not be opened
        PortLost,    // the port failed during use
        SetUpRefused,
        SweepRefused,
        NoAnswer, // no sweep arrived in time, or the board does not answer
        Failed,   // a hardware or conversion error
        Interrupted
    };

    Kind kind = Kind::Done;
    QString reason;
};

// The measuring instrument: the driver for the configured interface, the acquisition server, the table with the last
// sweep, and the conversion of counts. It shows nothing itself, but returns results and emits signals. Used by the
// window, calvorn-sweep and remote control.
//
// Runs one sweep at a time: the state is kSweeping from startSweep() until the driver's aComplete, otherwise kIdle.
class Instrument : public QObject
{
    Q_OBJECT

public:
    // Values returned by sweepState().
    static constexpr std::int16_t kIdle = 0;
    static constexpr std::int16_t kSweeping = 4;

    // serverProgram: path of the acquisition server. settingsFile: path passed to the server.
    Instrument(Configuration &configuration, Log &log, Clock &clock, const QString &serverProgram,
               const QString &settingsFile, QObject *parent = nullptr);
    ~Instrument() override;

    SweepTable &table() { return m_table; }
    const SweepTable &table() const { return m_table; }
    SampleConversion &conversion() { return m_conversion; }
    ServerProcess &server() { return m_server; }

    // --- connect ---

    // Starts the server in advance, so that it is ready when connectHardware() needs it.
    void launchServer() { m_server.launch(); }

    // Creates the driver for the configured interface. Returns false for an unknown interface.
    bool makeDriver();
    // Replaces the configured driver with one of another class.
    template <typename Driver, typename... Arguments>
    Driver &useDriver(Arguments &&...arguments)
    {
        auto driver = std::make_unique<Driver>(context(), std::forward<Arguments>(arguments)...);
        Driver &made = *driver;
        adopt(std::move(driver));
        return made;
    }
    // Null before makeDriver() or useDriver().
    AcquisitionDriver *driver() const { return m_driver.get(); }
    // Throws RuntimeError(NoDriver) if there is no driver.
    AcquisitionDriver &requiredDriver() const;

    // Opens the port and configures the hardware, including the stored auxiliary outputs. The driver's signals report
    // failures. Throws RuntimeError(NoDriver) without a driver.
    void connectHardware();

    // --- range ---

    // Stores a range (Hz) in the configuration, widens it if it is too narrow, computes the step and clears the table.
    // Returns true if the range was widened; startNotice and stopNotice in the configuration then describe the change.
    bool planRange(std::int32_t start, std::int32_t stop);

    // --- sweep ---

    std::int16_t sweepState() const { return m_sweepState; }
    bool isSweeping() const { return m_sweepState != kIdle; }

    // Starts a sweep with the current plan; the instrument must be idle. Returns false if the hardware rejects the
    // plan. Throws RuntimeError if the sweep cannot be started; the instrument is then idle.
    bool startSweep(SweepRun run = SweepRun::UntilStopped);

    // The mode of the last start, unless endAfterNextVector() has changed it since.
    SweepRun run() const { return m_run; }

    // Ends a running sweep after its next vector.
    void endAfterNextVector();

    // Returns true if the vector of a single sweep is stored but the hardware has not yet confirmed the stop.
    bool isEnding() const { return isSweeping() && isSingleDone(); }

    // reason: 1 = the range changed during a sweep, 2 = the user requested the stop. aComplete follows.
    void stopSweep(std::int16_t reason = 2);

    // Converts a vector and stores it in the table. The vector of a single sweep stops the sweep; later vectors are
    // discarded. Throws RuntimeError if the vector cannot be converted or the sweep cannot be stopped.
    void store(const QVector<int> &vector);

    // Connects, runs this many sweeps, and shuts the hardware down. For callers without a window: blocks in its own
    // event loop. Calls isInterrupted every 50 ms. vectorStored() reports each sweep, told() anything else that the
    // user should know.
    SweepOutcome takeSweeps(int count, const std::function<bool()> &isInterrupted);

    // Stops the sweep, parks the generator and closes the port. The server keeps running until server().stop().
    void shutDown();

signals:
    // driver() now returns a new driver.
    void driverMade();
    // takeSweeps() has connected the hardware and is about to sweep.
    void connected();
    // A sweep is about to start.
    void sweepStarts();
    // The sweep has ended, or a reset has cancelled it.
    void becameIdle();
    // takeSweeps() has lost a sweep to a transmission error and continues, or the final shutdown has failed.
    void told(const QString &text);

private:
    DriverContext context();
    void adopt(std::unique_ptr<AcquisitionDriver> driver);
    bool isSingleDone() const { return m_run == SweepRun::Once && m_singleStored; }
    void becomeIdle();
    void restoreStoredOutputs();
    SweepOutcome take(int count, const std::function<bool()> &isInterrupted);
    bool connectOrExplain(SweepOutcome &outcome);
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
