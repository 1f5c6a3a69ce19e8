// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace calvorn {

class SingleSweep;

// Lets SCPI clients of this computer sweep, at this TCP port, until a signal ends the program. The settings must have
// been prepared. An exit code; what went wrong has been said.
int listenForClients(SingleSweep &sweep, quint16 port);

} // namespace calvorn
