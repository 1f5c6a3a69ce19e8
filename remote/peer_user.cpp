// SPDX-License-Identifier: MIT
#include "remote/peer_user.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QtEndian>

#include <cstring>

#include <sys/socket.h>

namespace calvorn {

namespace {

// Formats an address and a port as in /proc/net/tcp and /proc/net/tcp6, with each 32-bit word of the address in host
// byte order.
QByteArray place(const QHostAddress &address, quint16 port)
{
    QByteArray words;
    const auto addWord = [&words](const uchar *bytes) {
        quint32 word = 0;
        std::memcpy(&word, bytes, sizeof word);
        words += QByteArray::number(word, 16).rightJustified(8, '0');
    };
    if (address.protocol() == QAbstractSocket::IPv4Protocol) {
        const quint32 network = qToBigEndian(address.toIPv4Address());
        addWord(reinterpret_cast<const uchar *>(&network));
    } else {
        const Q_IPV6ADDR bytes = address.toIPv6Address();
        for (int word = 0; word < 4; ++word)
            addWord(bytes.c + 4 * word);
    }
    return words.toUpper() + ':' + QByteArray::number(port, 16).rightJustified(4, '0').toUpper();
}

} // namespace

std::optional<uid_t> userOfTcpPeer(const QHostAddress &peer, quint16 peerPort, const QHostAddress &own, quint16 ownPort)
{
    // Columns: number, local address, remote address, state, queues, timer, retransmissions, user, time-out, inode.
    enum Column { Local = 1, Remote = 2, User = 7, Inode = 9 };
    QFile table(peer.protocol() == QAbstractSocket::IPv4Protocol ? QStringLiteral("/proc/net/tcp")
                                                                 : QStringLiteral("/proc/net/tcp6"));
    if (!table.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray local = place(peer, peerPort);
    const QByteArray remote = place(own, ownPort);
    for (const QByteArray &line : table.readAll().split('\n')) {
        const QByteArrayList columns = line.simplified().split(' ');
        // A socket that is no longer open in any process has inode 0.
        if (columns.size() <= Inode || columns[Local] != local || columns[Remote] != remote || columns[Inode] == "0")
            continue;
        bool isNumber = false;
        const uint user = columns[User].toUInt(&isNumber);
        return isNumber ? std::optional<uid_t>(user) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<uid_t> userOfUnixPeer(qintptr socket)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0)
        return std::nullopt;
    return credentials.uid;
}

} // namespace calvorn
