// SPDX-License-Identifier: MIT
#include "instrument/server_process.h"

#include "core/runtime_error.h"
#include "protocol/server_start.h"

#include <QDBusError>
#include <QDeadlineTimer>
#include <QFileInfo>

#include <utility>

namespace calvorn {

namespace {

constexpr int kStartUpTimeoutMs = 8000;
// Long enough to stop a board first, even on a busy computer.
constexpr int kOrderlyEndMs = 5000;
// For a server that has not opened a port yet.
constexpr int kEarlyEndMs = 700;
constexpr int kKilledMs = 1000;

} // namespace

ServerProcess::ServerProcess(QString program, const QString &settingsFile, QObject *parent)
    : QObject(parent)
    , m_program(std::move(program))
    , m_arguments(settingsFile.isEmpty() ? QStringList() : QStringList(settingsFile))
{
    m_process.setParent(this);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&m_process, &QProcess::finished, this, &ServerProcess::processFinished);
}

ServerProcess::~ServerProcess()
{
    stop();
}

void ServerProcess::launch()
{
    if (m_process.state() == QProcess::NotRunning)
        m_process.start(m_program, m_arguments);
}

void ServerProcess::connectToServer()
{
    if (m_connected)
        return;
    launch();
    const QByteArray address = readAddress();
    static int serial = 0;
    m_connectionName = QStringLiteral("calvorn-server-%1").arg(++serial);
    const QDBusConnection peer = QDBusConnection::connectToPeer(QString::fromLatin1(address), m_connectionName);
    if (!peer.isConnected()) {
        const QString reason = peer.lastError().message();
        disconnectFromServer();
        kill(kEarlyEndMs);
        throw RuntimeError(RuntimeError::Kind::DriverCall, tr("no connection to it (%1)").arg(reason));
    }
    m_connected = true;
}

QByteArray ServerProcess::readAddress()
{
    QDeadlineTimer deadline(kStartUpTimeoutMs);
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            notStarted(m_process.error() == QProcess::UnknownError ? tr("it has ended") : m_process.errorString());
    const QByteArray line = m_process.readLine().trimmed();
    if (line.startsWith(kServerRefusal))
        notStarted(QString::fromLocal8Bit(line.mid(QByteArrayView(kServerRefusal).size())));
    return line;
}

void ServerProcess::notStarted(const QString &reason)
{
    kill(kEarlyEndMs);
    throw RuntimeError(RuntimeError::Kind::DriverCall,
                       tr("%1 could not be started (%2)").arg(QFileInfo(m_program).fileName(), reason));
}

void ServerProcess::disconnectFromServer()
{
    m_connected = false;
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromPeer(m_connectionName);
    m_connectionName.clear();
}

void ServerProcess::kill(int patienceMs)
{
    m_process.terminate();
    endWithin(patienceMs);
}

void ServerProcess::endWithin(int milliseconds)
{
    if (m_process.state() == QProcess::NotRunning || m_process.waitForFinished(milliseconds))
        return;
    m_process.kill();
    m_process.waitForFinished(kKilledMs);
}

void ServerProcess::processFinished()
{
    const bool wasConnected = m_connected;
    disconnectFromServer();
    if (wasConnected)
        emit ended();
}

void ServerProcess::stop()
{
    disconnectFromServer();
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    endWithin(kOrderlyEndMs);
}

} // namespace calvorn
