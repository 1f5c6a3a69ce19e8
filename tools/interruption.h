// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

namespace calvorn {

// Makes SIGINT, SIGTERM and SIGHUP request an orderly exit. Call this early in main().
void watchForInterruption();

// Returns the last of these signals received, or 0.
int interruption();

} // namespace calvorn
