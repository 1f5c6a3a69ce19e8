// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace calvorn {

class SingleSweep;

// Serves SCPI clients of this computer at this TCP port until a signal ends the program. prepare() must have been
// called. Returns an exit code; errors have been printed.
int listenForClients(SingleSweep &sweep, quint16 port);

} // namespace calvorn
