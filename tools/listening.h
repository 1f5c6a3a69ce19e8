// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace calvorn {

class SingleSweep;

// Serves local SCPI clients on this TCP port until a signal stops the program. SingleSweep::prepare() must have been
// called. Prints errors and returns an exit code.
int listenForClients(SingleSweep &sweep, quint16 port);

} // namespace calvorn
