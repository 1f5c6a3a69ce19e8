// SPDX-License-Identifier: MIT
#include "instrument/instrument.h"

#include "core/number_text.h"
#include "core/runtime_error.h"
#include "instrument/aux_hardware.h"
#include "instrument/driver_factory.h"
#include "instrument/frequency_plan.h"
#include "protocol/error_codes.h"

#include <QTimer>

namespace calvorn {

namespace {

// At the slowest speed, a sweep takes a few seconds.
constexpr int kSweepTimeoutMs = 30000;
constexpr int kPollMs = 50;

// Returns the first line of a message, whose lines are separated by carriage returns.
QString firstLine(const QString &text)
{
    return text.section(u'\r', 0, 0);
}

} // namespace

Instrument::Instrument(Configuration &configuration, Log &log, Clock &clock, const QString &serverProgram,
                       const QString &settingsFile, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_log(log)
    , m_clock(clock)
    , m_server(serverProgram, settingsFile)
    , m_table(configuration)
    , m_conversion(configuration, m_table)
{
}

Instrument::~Instrument() = default;

DriverContext Instrument::context()
{
    return {m_configuration, m_log, m_server, m_table, m_clock};
}

bool Instrument::makeDriver()
{
    adopt(calvorn::makeDriver(context()));
    return m_driver != nullptr;
}

void Instrument::adopt(std::unique_ptr<AcquisitionDriver> driver)
{
    m_driver = std::move(driver);
    if (!m_driver)
        return;
    m_conversion.setInverted([this] { return m_driver->countsAreInverted(); });
    connect(m_driver.get(), &AcquisitionDriver::aComplete, this, &Instrument::becomeIdle);
    connect(m_driver.get(), &AcquisitionDriver::sweepForgotten, this, &Instrument::becomeIdle);
    connect(m_driver.get(), &AcquisitionDriver::hardwareReady, this, &Instrument::restoreStoredOutputs);
    emit driverMade();
}

void Instrument::becomeIdle()
{
    m_sweepState = kIdle;
    emit becameIdle();
}

void Instrument::restoreStoredOutputs()
{
    if (m_driver->outputs())
        restoreOutputs(m_configuration, auxHardwareOf([this] { return m_driver.get(); }, m_log));
}

AcquisitionDriver &Instrument::requiredDriver() const
{
    if (!m_driver)
        throw RuntimeError(RuntimeError::Kind::NoDriver, NumberText::fromInteger(m_configuration.interfaceType));
    return *m_driver;
}

void Instrument::connectHardware()
{
    requiredDriver().startUp();
}

bool Instrument::planRange(std::int32_t start, std::int32_t stop)
{
    m_configuration.startFreq = start;
    m_configuration.stopFreq = stop;
    const bool corrected = correctRange(m_configuration);
    m_configuration.stepFreq = stepOfRange(m_configuration.startFreq, m_configuration.stopFreq);
    m_table.inizializzaGrid();
    return corrected;
}

bool Instrument::startSweep(SweepRun run)
{
    AcquisitionDriver &driver = requiredDriver();
    emit sweepStarts();
    m_sweepState = kSweeping;
    m_run = run;
    m_singleStored = false;
    try {
        const bool accepted = driver.startSweep();
        if (!accepted)
            m_sweepState = kIdle;
        return accepted;
    } catch (const RuntimeError &) {
        // No sweep has begun, so no aComplete would follow to reset the state.
        m_sweepState = kIdle;
        throw;
    }
}

void Instrument::stopSweep(std::int16_t reason)
{
    if (m_driver)
        m_driver->stopSweep(reason);
}

void Instrument::endAfterNextVector()
{
    m_run = SweepRun::Once;
    m_singleStored = false;
}

void Instrument::store(const QVector<int> &vector)
{
    if (isSingleDone())
        return;
    m_conversion.datiDDS(vector);
    if (m_run != SweepRun::Once)
        return;
    m_singleStored = true;
    stopSweep();
}

void Instrument::shutDown()
{
    if (m_driver)
        m_driver->shutDown();
}

SweepOutcome Instrument::takeSweeps(int count, const std::function<bool()> &isInterrupted)
{
    SweepOutcome outcome;
    try {
        outcome = take(count, isInterrupted);
    } catch (const RuntimeError &error) {
        const bool noAnswer = error.kind() == RuntimeError::Kind::NoAnswer;
        outcome = {noAnswer ? SweepOutcome::Kind::NoAnswer : SweepOutcome::Kind::Failed, error.message()};
    }
    // Stops the server in every case, so that the hardware is idle when the caller continues.
    m_server.stop();
    return outcome;
}

// Connects the hardware. Returns true on success; otherwise stores the driver's error message in the outcome.
bool Instrument::connectOrExplain(SweepOutcome &outcome)
{
    QObject listener;
    bool isReady = false;
    connect(m_driver.get(), &AcquisitionDriver::portRefused, &listener, [&outcome](const QString &reason) {
        outcome = {SweepOutcome::Kind::PortRefused, reason};
    });
    connect(m_driver.get(), &AcquisitionDriver::refused, &listener, [&outcome](const QString &text) {
        if (outcome.kind == SweepOutcome::Kind::Done)
            outcome = {SweepOutcome::Kind::SetUpRefused, firstLine(text)};
    });
    connect(m_driver.get(), &AcquisitionDriver::hardwareReady, &listener, [&isReady] { isReady = true; });
    connectHardware();
    return isReady;
}

SweepOutcome Instrument::take(int count, const std::function<bool()> &isInterrupted)
{
    SweepOutcome outcome;
    if (!m_driver)
        makeDriver();
    AcquisitionDriver &driver = requiredDriver();
    QEventLoop wait;
    int taken = 0;
    connect(&driver, &AcquisitionDriver::aErrore, &wait,
            [&](std::int16_t code, const QString &text) { hardwareFailed(code, text, outcome, wait); });
    connect(&driver, &AcquisitionDriver::aComplete, &wait, &QEventLoop::quit);
    connect(&driver, &AcquisitionDriver::aVettore, &wait, [&](const QVector<int> &vector) {
        if (taken >= count)
            return;
        try {
            ++taken;
            store(vector);
        } catch (const RuntimeError &error) {
            --taken;
            outcome = {SweepOutcome::Kind::Failed, error.message()};
            wait.quit();
        }
        if (taken == count)
            wait.quit();
    });
    if (!connectOrExplain(outcome))
        return outcome;
    emit connected();
    if (!startSweep())
        return {SweepOutcome::Kind::SweepRefused, QString()};
    // An error that has already occurred can no longer quit the loop, so do not wait in that case.
    if (outcome.kind == SweepOutcome::Kind::Done)
        waitForSweeps(taken, isInterrupted, wait);
    driver.disconnect(&wait);
    try {
        shutDown();
    } catch (const RuntimeError &error) {
        // The stored sweeps are still valid.
        emit told(error.message());
    }
    if (isInterrupted())
        return {SweepOutcome::Kind::Interrupted, QString()};
    if (taken >= count)
        return {};
    return outcome.kind != SweepOutcome::Kind::Done ? outcome : SweepOutcome{SweepOutcome::Kind::NoAnswer, QString()};
}

// A transmission error affects only one sweep; the next one follows.
void Instrument::hardwareFailed(std::int16_t code, const QString &text, SweepOutcome &outcome, QEventLoop &wait)
{
    switch (static_cast<ErrorCode>(code)) {
    case ErrorCode::Transmission:
        emit told(firstLine(text));
        return;
    case ErrorCode::Ignorable:
        return;
    case ErrorCode::Port:
        outcome = {SweepOutcome::Kind::PortLost, firstLine(text)};
        break;
    case ErrorCode::Board:
        outcome = {SweepOutcome::Kind::NoAnswer, firstLine(text)};
        break;
    default:
        outcome = {SweepOutcome::Kind::Failed, firstLine(text)};
    }
    wait.quit();
}

// Counts ticks rather than elapsed time, so that a pause in this program does not count.
void Instrument::waitForSweeps(const int &taken, const std::function<bool()> &isInterrupted, QEventLoop &wait)
{
    QTimer poll;
    int seen = 0;
    int ticks = 0; // since the last sweep
    connect(&poll, &QTimer::timeout, &wait, [&] {
        ticks = taken == seen ? ticks + 1 : 0;
        seen = taken;
        if (isInterrupted() || ticks > kSweepTimeoutMs / kPollMs)
            wait.quit();
    });
    poll.start(kPollMs);
    wait.exec();
}

} // namespace calvorn
