// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>

#include <optional>

#include <sys/types.h>

namespace calvorn {

// Find the user at the other end of a local connection, as the kernel reports it.

// Returns the owner of the socket at the other end of an accepted TCP connection, or nothing if the kernel no longer
// knows such a socket.
std::optional<uid_t> userOfTcpPeer(const QHostAddress &peer, quint16 peerPort, const QHostAddress &own,
                                   quint16 ownPort);

// Returns the user who connected the Unix socket.
std::optional<uid_t> userOfUnixPeer(qintptr socket);

} // namespace calvorn
