// SPDX-License-Identifier: MIT
#include "acquisition/acquisition_driver.h"

#include "core/runtime_error.h"

#include <QScopedValueRollback>

#include <utility>

namespace calvorn {

AcquisitionDriver::AcquisitionDriver(const DriverContext &context, QString path, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_path(std::move(path))
{
    connect(&m_context.server, &ServerProcess::ended, this, &AcquisitionDriver::serverEnded);
}

void AcquisitionDriver::startUp()
{
    const QScopedValueRollback guard(m_startingUp, true);
    if (configureHardware())
        emit hardwareReady();
}

void AcquisitionDriver::ensureServer()
{
    if (isServerUp() && m_attached)
        return;
    m_context.server.connectToServer();
    attach(m_context.server.connection(), m_path);
    m_attached = true;
    m_takenVectors = 0;
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
    if (!std::exchange(m_sweepRuns, false))
        return;
    // Not from inside the call that failed: events arrive between window messages. Before the error, so that its box
    // does not keep those waiting who wait for the end of the sweep.
    QMetaObject::invokeMethod(this, &AcquisitionDriver::aComplete, Qt::QueuedConnection);
    // After a time-out the failed call has its own message.
    if (!m_endedByTimeout)
        emit aErrore(kErrorServerEnded, tr("The acquisition server has ended unexpectedly.") + u'\r' +
                                            tr("\"Sweep ON\" starts it again."));
}

void AcquisitionDriver::sweepEnded()
{
    m_sweepRuns = false;
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

void AcquisitionDriver::dropVectorsUnderWay()
{
    ++m_staleVectors;
    // Posted behind every event that the connection has delivered so far.
    QMetaObject::invokeMethod(
        this, [this] { --m_staleVectors; }, Qt::QueuedConnection);
}

} // namespace calvorn
