// SPDX-License-Identifier: MIT
#include "acquisition/acquisition_driver.h"

#include "core/runtime_error.h"

#include <QScopedValueRollback>

#include <utility>

namespace calvorn {

namespace {

constexpr int kWatchMs = 1000;
constexpr int kMostUnanswered = 3; // ticks

} // namespace

AcquisitionDriver::AcquisitionDriver(const DriverContext &context, QString path, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_path(std::move(path))
{
    connect(&m_context.server, &ServerProcess::ended, this, &AcquisitionDriver::serverEnded);
    m_watch.setInterval(kWatchMs);
    connect(&m_watch, &QTimer::timeout, this, &AcquisitionDriver::watchServer);
}

void AcquisitionDriver::startUp()
{
    const QScopedValueRollback guard(m_startingUp, true);
    m_settingsSent = configureHardware();
    if (m_settingsSent)
        emit hardwareReady();
}

bool AcquisitionDriver::startSweep()
{
    ensureServer();
    log().writeLog(logPrefix() + tr("Start sweep"));
    const bool late = !m_settingsSent;
    if (late)
        sendSettings();
    const bool accepted = runPlan();
    sweepBegun();
    // What needs an open port may have one by now.
    if (late)
        emit hardwareReady();
    m_settingsSent = true;
    return accepted;
}

void AcquisitionDriver::shutDown()
{
    m_closing = true;
    // What still arrives concerns nobody any more.
    disconnect();
    releaseHardware();
}

void AcquisitionDriver::ensureServer()
{
    if (isServerUp() && m_attached)
        return;
    if (m_closing)
        throw RuntimeError(RuntimeError::Kind::Closing);
    m_context.server.connectToServer();
    attach(m_context.server.connection(), m_path);
    m_attached = true;
    m_takenVectors = 0;
    m_vectorPlan.reset();
    // The first operation of a start-up comes here too; only any other one has to catch up on the start-up.
    if (!m_startingUp)
        startUp();
}

void AcquisitionDriver::callFailed(const QDBusError &error)
{
    if (error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout ||
        error.type() == QDBusError::TimedOut) {
        const QScopedValueRollback guard(m_endedByTimeout, true);
        m_context.server.kill();
        throw RuntimeError(RuntimeError::Kind::NoAnswer, tr("it did not answer in time and was ended"));
    }
    throw RuntimeError(RuntimeError::Kind::DriverCall, error.message());
}

void AcquisitionDriver::serverEnded()
{
    m_attached = false;
    m_settingsSent = false;
    m_watch.stop();
    m_question.reset();
    if (!std::exchange(m_sweepRuns, false))
        return;
    // Not from inside the call that failed: events arrive between window messages. Before the error, so that its box
    // does not keep those waiting who wait for the end of the sweep.
    QMetaObject::invokeMethod(this, &AcquisitionDriver::aComplete, Qt::QueuedConnection);
    // After a time-out the failed call has its own message.
    if (!m_endedByTimeout)
        emit aErrore(kErrorServerEnded, (m_endedByWatch ? tr("The acquisition server did not answer and was ended.")
                                                        : tr("The acquisition server has ended unexpectedly.")) +
                                            u'\r' + tr("\"Sweep ON\" starts it again."));
}

// The one rule that ties a vector to its plan. It compares what was measured with what stands in the table, so the
// order of calls and events does not matter.
bool AcquisitionDriver::isOfTablePlan() const
{
    const std::optional<SweepAxis> axis = m_context.table.axis();
    return axis && m_vectorPlan == VectorPlan{*axis, mode()};
}

void AcquisitionDriver::sweepBegun()
{
    m_sweepRuns = true;
    m_question.reset();
    m_watch.start();
}

// Counts its own ticks and not the time, so that a program that was stopped does not blame the server.
void AcquisitionDriver::watchServer()
{
    const bool answered = m_question && m_question->isFinished() && !m_question->isError();
    m_unanswered = answered || !m_question ? 0 : m_unanswered + 1;
    if (m_unanswered >= kMostUnanswered) {
        serverHangs();
        return;
    }
    if (m_question && !m_question->isFinished())
        return;
    m_question.reset(new QDBusPendingCallWatcher(askWhetherWorking()));
    connect(m_question.get(), &QDBusPendingCallWatcher::finished, this,
            [this](const QDBusPendingCallWatcher *question) {
                const QDBusPendingReply<bool> reply = *question;
                if (!reply.isError() && !reply.value())
                    serverHangs();
            });
}

void AcquisitionDriver::serverHangs()
{
    const QScopedValueRollback guard(m_endedByWatch, true);
    m_context.server.kill();
}

void AcquisitionDriver::sweepEnded()
{
    m_sweepRuns = false;
    m_watch.stop();
    m_question.reset();
    emit aComplete();
}

AcquisitionDriver::ErrorReaction AcquisitionDriver::reactionTo(std::int16_t tipoErrore) const
{
    // A server that is gone concerns the user whatever the hardware is.
    return tipoErrore == kErrorServerEnded ? ErrorReaction::LogAndAsk : hardwareReactionTo(tipoErrore);
}

void AcquisitionDriver::ignoringErrors(const std::function<void()> &step)
{
    if (!isServerUp())
        return;
    try {
        step();
    } catch (const RuntimeError &error) {
        log().writeLog(logPrefix() + error.message());
    }
}

bool AcquisitionDriver::tellWhetherOpen(const std::function<bool()> &openPort, const QString &refusal)
{
    bool open = false;
    try {
        open = openPort();
    } catch (const RuntimeError &error) {
        log().writeLog(logPrefix() + error.message());
    }
    if (open)
        emit portOpened();
    else
        messages().beepAndWarn(refusal);
    return open;
}

QString AcquisitionDriver::serialPortRefusal() const
{
    return tr("Wrong serial port number (COM%1).").arg(configuration().commPort) + u'\r' +
           tr("Please verify 'SetUp/Configuration/Ports'.");
}

AcquisitionDriver::ErrorReaction AcquisitionDriver::serialReactionTo(std::int16_t tipoErrore)
{
    return tipoErrore == 1 ? ErrorReaction::CountSilently : ErrorReaction::LogOnly;
}

} // namespace calvorn
