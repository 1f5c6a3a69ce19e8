// SPDX-License-Identifier: MIT
#include "tools/interruption.h"

#include "platform/process_guard.h"

#include <initializer_list>

namespace calvorn {

namespace {

volatile std::sig_atomic_t asked = 0;

extern "C" void remember(int signal)
{
    asked = signal;
}

} // namespace

void watchForInterruption()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            std::signal(signal, remember);
}

int interruption()
{
    return asked;
}

} // namespace calvorn
