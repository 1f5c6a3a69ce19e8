// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// The file name of the server program.
inline constexpr const char *kServerName = "CalvornAsync";

// The server's first line on its standard output is the address of its socket, or this mark followed by the reason
// why it could not open one.
inline constexpr const char *kServerRefusal = "! ";

// The time in ms that the program waits for the reply to an operation. Every operation of the server returns sooner,
// whatever its hardware does; a server that takes longer has hung.
inline constexpr int kCallTimeoutMs = 3'000;

} // namespace calvorn
