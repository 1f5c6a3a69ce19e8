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

// Accepts clients at a TCP port of 127.0.0.1 and ::1 and at a Unix socket in the user's runtime folder. Only clients of
// the user of this process are accepted, at most kMostClients at a time; all others are disconnected, which logged()
// reports.
//
// A client that does not read its answers is dropped.
class ScpiDoor : public QObject
{
    Q_OBJECT

public:
    static constexpr quint16 kUsualPort = 5025; // for SCPI over TCP, registered with IANA
    static constexpr int kMostClients = 4;
    static constexpr qint64 kMostUnread = 1 << 20; // bytes that a client may leave unread

    explicit ScpiDoor(RemoteTarget &target, QObject *parent = nullptr);
    ~ScpiDoor() override;

    // port: 0 for any free one. Returns an empty text, or a sentence that says why the port cannot be opened.
    QString open(quint16 port);
    void close();

    quint16 port() const { return m_port; } // 0 while it is closed
    int clients() const { return m_clients; }

signals:
    void logged(const QString &text);
    void clientsChanged(int clients);

private:
    void acceptTcp(QTcpServer &server);
    void acceptLocal();
    // Returns whether the user is the one of this process. Logs a refusal.
    bool admits(const std::optional<uid_t> &user, const QString &from);
    // Serves the client now or as soon as a place is free, or disconnects the client.
    template <typename Socket>
    void welcome(Socket *socket, const QString &from);
    template <typename Socket>
    void serve(Socket *socket, const QString &from);

    RemoteTarget &m_target;
    std::unique_ptr<QTcpServer> m_ipv4;
    std::unique_ptr<QTcpServer> m_ipv6; // null if the computer has no IPv6
    std::unique_ptr<QLocalServer> m_local;
    quint16 m_port = 0;
    int m_clients = 0;
};

} // namespace calvorn
