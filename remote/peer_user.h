// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>

#include <optional>

#include <sys/types.h>

namespace calvorn {

// Who holds the other end of a connection of this computer with itself, as the kernel reports it.

// Of a TCP connection that was accepted here: the owner of the socket at the other end. Nothing where the kernel knows
// no such socket any more.
std::optional<uid_t> userOfTcpPeer(const QHostAddress &peer, quint16 peerPort, const QHostAddress &own,
                                   quint16 ownPort);

// Of a Unix socket: who connected it.
std::optional<uid_t> userOfUnixPeer(qintptr socket);

} // namespace calvorn
