// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

namespace calvorn {

// SIGINT, SIGTERM and SIGHUP ask for an orderly end. To be called first thing in main().
void watchForInterruption();

// The signal that came last, 0 when none did.
int interruption();

} // namespace calvorn
