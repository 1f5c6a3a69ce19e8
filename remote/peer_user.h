// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>

#include <optional>

#include <sys/types.h>

namespace calvorn {

// These functions identify the user at the other end of a local connection, as reported by the kernel.

// Returns the owner of the socket at the other end of an accepted TCP connection, or nothing if the kernel no longer
// lists that socket.
std::optional<uid_t> userOfTcpPeer(const QHostAddress &peer, quint16 peerPort, const QHostAddress &own,
                                   quint16 ownPort);

// Returns the user who connected the Unix socket.
std::optional<uid_t> userOfUnixPeer(qintptr socket);

} // namespace calvorn
