// SPDX-License-Identifier: MIT
#pragma once

#include "remote/remote_target.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

#include <sys/types.h>

class QLocalServer;
class QTcpServer;

namespace calvorn {

class ScpiSession;

// Where clients come in: a TCP port at 127.0.0.1 and ::1, and a Unix socket in the runtime folder of the user. Only the
// user of this process gets in, and at most kMostClients at a time; others are closed, which logged() tells.
//
// A client that does not read what it asked for is dropped.
class ScpiDoor : public QObject
{
    Q_OBJECT

public:
    static constexpr quint16 kUsualPort = 5025; // of SCPI over TCP, as IANA has it
    static constexpr int kMostClients = 4;
    static constexpr qint64 kMostUnread = 1 << 20; // bytes that a client may leave unread

    explicit ScpiDoor(RemoteTarget &target, QObject *parent = nullptr);
    ~ScpiDoor() override;

    // port: 0 for any that is free. Empty, or why it cannot be opened, in a sentence.
    QString open(quint16 port);
    void close();

    bool isOpen() const { return m_port != 0; }
    quint16 port() const { return m_port; } // 0 while it is closed
    QString socketPath() const;             // of the Unix socket; empty where there is none
    int clients() const { return m_clients; }

signals:
    void logged(const QString &text);
    void clientsChanged(int clients);

private:
    void acceptTcp(QTcpServer &server);
    void acceptLocal();
    // True: it is the user of this process.
    bool admits(const std::optional<uid_t> &user, const QString &from);
    // Serves the client now or when a place has become free, or sends it away.
    template <typename Socket>
    void welcome(Socket *socket, const QString &from);
    template <typename Socket>
    void serve(Socket *socket, const QString &from);

    RemoteTarget &m_target;
    std::unique_ptr<QTcpServer> m_ipv4;
    std::unique_ptr<QTcpServer> m_ipv6; // null where the computer has no IPv6
    std::unique_ptr<QLocalServer> m_local;
    quint16 m_port = 0;
    int m_clients = 0;
};

} // namespace calvorn
