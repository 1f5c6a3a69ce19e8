// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// File name of the server, in the folder of the program.
inline constexpr const char *kServerName = "CalvornAsync";

// The server's first line on its standard output is the address of its socket, or this mark and the reason why there is
// none.
inline constexpr const char *kServerRefusal = "! ";

// How long the program waits for the answer to an operation, in ms. Every operation of the server returns sooner,
// whatever its hardware does; a server that needs longer hangs.
inline constexpr int kCallTimeoutMs = 3'000;

} // namespace calvorn
