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

// Accepts clients on a TCP port on 127.0.0.1 and ::1 and on a Unix socket in the user's runtime folder. Clients must
// run as the same user as this process, and at most kMostClients are accepted at a time; all others are disconnected
// and reported through logged().
//
// A client that does not read its responses is disconnected.
class ScpiServer : public QObject
{
    Q_OBJECT

public:
    static constexpr quint16 kUsualPort = 5025; // registered with IANA for SCPI over TCP
    static constexpr int kMostClients = 4;
    static constexpr qint64 kMostUnread = 1 << 20; // bytes that a client may leave unread

    explicit ScpiServer(RemoteTarget &target, QObject *parent = nullptr);
    ~ScpiServer() override;

    // port: 0 selects any free port. Returns an empty string, or an error message if the port cannot be opened.
    QString open(quint16 port);
    void close();

    quint16 port() const { return m_port; } // 0 while closed
    int clients() const { return m_clients; }

signals:
    void logged(const QString &text);
    void clientsChanged(int clients);

private:
    void acceptTcp(QTcpServer &server);
    void acceptLocal();
    // Returns true if the user also owns this process; otherwise logs the rejection.
    bool admits(const std::optional<uid_t> &user, const QString &from);
    // Serves the client, waiting briefly for a free slot if necessary; if none becomes free, disconnects the client.
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
