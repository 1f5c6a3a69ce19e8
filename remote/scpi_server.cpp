// SPDX-License-Identifier: MIT
#include "remote/scpi_server.h"

#include "remote/peer_user.h"
#include "remote/scpi_session.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <unistd.h>

namespace calvorn {

namespace {

constexpr qint64 kChunk = 4096; // bytes to process from one client before serving the others
constexpr qint64 kReadBuffer = 65'536;
// Time to wait for a free slot: a new client may connect before the previous client's disconnection is noticed.
constexpr int kPatience = 200; // ms

} // namespace

ScpiServer::ScpiServer(RemoteTarget &target, QObject *parent)
    : QObject(parent)
    , m_target(target)
{
}

ScpiServer::~ScpiServer()
{
    close();
}

QString ScpiServer::open(quint16 port)
{
    close();
    auto ipv4 = std::make_unique<QTcpServer>();
    if (!ipv4->listen(QHostAddress::LocalHost, port))
        return tr("Remote control cannot use the port %1 (%2).").arg(port).arg(ipv4->errorString());
    auto ipv6 = std::make_unique<QTcpServer>();
    if (!ipv6->listen(QHostAddress::LocalHostIPv6, ipv4->serverPort()))
        ipv6.reset();
    m_port = ipv4->serverPort();
    m_ipv4 = std::move(ipv4);
    m_ipv6 = std::move(ipv6);
    for (QTcpServer *server : {m_ipv4.get(), m_ipv6.get()})
        if (server)
            connect(server, &QTcpServer::newConnection, this, [this, server] { acceptTcp(*server); });
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    auto local = std::make_unique<QLocalServer>();
    local->setSocketOptions(QLocalServer::UserAccessOption);
    const QString path = folder + QStringLiteral("/calvorn-%1.scpi").arg(m_port);
    // This process owns the port, so an existing socket was left behind by an earlier process.
    QLocalServer::removeServer(path);
    if (folder.isEmpty() || !local->listen(path)) {
        emit logged(tr("Remote control could not create its Unix socket (%1).").arg(local->errorString()));
        return {};
    }
    // Remove the execute permission.
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    m_local = std::move(local);
    connect(m_local.get(), &QLocalServer::newConnection, this, &ScpiServer::acceptLocal);
    return {};
}

void ScpiServer::close()
{
    m_ipv4.reset();
    m_ipv6.reset();
    m_local.reset();
    m_port = 0;
    // serve() has made this object the parent of the sockets.
    for (auto *session : findChildren<ScpiSession *>())
        delete session->parent();
}

void ScpiServer::acceptTcp(QTcpServer &server)
{
    while (QTcpSocket *socket = server.nextPendingConnection()) {
        const QString from = tr("port %1").arg(socket->peerPort());
        const auto user =
            userOfTcpPeer(socket->peerAddress(), socket->peerPort(), socket->localAddress(), socket->localPort());
        if (!admits(user, from)) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        welcome(socket, from);
    }
}

void ScpiServer::acceptLocal()
{
    while (QLocalSocket *socket = m_local->nextPendingConnection()) {
        const QString from = tr("the Unix socket");
        if (!admits(userOfUnixPeer(socket->socketDescriptor()), from)) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        welcome(socket, from);
    }
}

bool ScpiServer::admits(const std::optional<uid_t> &user, const QString &from)
{
    if (user && *user == getuid())
        return true;
    emit logged(user ? tr("Remote control: rejected the user %1 at %2.").arg(*user).arg(from)
                     : tr("Remote control: rejected an unknown user at %1.").arg(from));
    return false;
}

template <typename Socket>
void ScpiServer::welcome(Socket *socket, const QString &from)
{
    if (m_clients < kMostClients) {
        serve(socket, from);
        return;
    }
    QTimer::singleShot(kPatience, socket, [this, socket, from] {
        if (socket->state() == Socket::ConnectedState && m_clients < kMostClients) {
            serve(socket, from);
            return;
        }
        if (m_clients >= kMostClients)
            emit logged(tr("Remote control: rejected a client, because %1 are already connected.").arg(kMostClients));
        socket->abort();
        socket->deleteLater();
    });
}

template <typename Socket>
void ScpiServer::serve(Socket *socket, const QString &from)
{
    socket->setParent(this);
    socket->setReadBufferSize(kReadBuffer);
    auto *session = new ScpiSession(m_target, socket);
    emit clientsChanged(++m_clients);
    // Any command may delete the socket and the session.
    const auto read = [socket = QPointer<Socket>(socket), session] {
        if (socket && !session->isBusy() && socket->bytesAvailable() > 0)
            session->take(socket->read(kChunk));
    };
    const auto drop = [this, socket, from] {
        emit logged(tr("Remote control: disconnected the client at %1, which does not read its responses.").arg(from));
        socket->abort();
    };
    connect(socket, &Socket::readyRead, session, read);
    // Queued, so that the rest of the program runs between two chunks.
    connect(session, &ScpiSession::ready, session, read, Qt::QueuedConnection);
    connect(session, &ScpiSession::overflowed, socket, drop, Qt::QueuedConnection);
    connect(session, &ScpiSession::answered, socket, [socket, drop](const QByteArray &bytes) {
        socket->write(bytes);
        if (socket->bytesToWrite() > kMostUnread)
            drop();
    });
    connect(socket, &Socket::disconnected, this, [this, socket] {
        emit clientsChanged(--m_clients);
        socket->deleteLater();
    });
    read();
}

} // namespace calvorn
