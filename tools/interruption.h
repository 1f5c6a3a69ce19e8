// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

namespace calvorn {

// Makes SIGINT, SIGTERM and SIGHUP request an orderly end. Call this first in main().
void watchForInterruption();

// Returns the last of these signals, or 0.
int interruption();

} // namespace calvorn
