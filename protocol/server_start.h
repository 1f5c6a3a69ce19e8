// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// The file name of the server program.
inline constexpr const char *kServerName = "CalvornAsync";

// The first line that the server prints to standard output is its socket address, or this prefix followed by the
// reason why it could not open a socket.
inline constexpr const char *kServerRefusal = "! ";

// How long the program waits for a reply from the server, in ms. Every server operation returns sooner, whatever the
// hardware does, so a server that takes longer has hung.
inline constexpr int kCallTimeoutMs = 3'000;

} // namespace calvorn
