// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <initializer_list>
#include <unistd.h>

namespace calvorn::test {

// For QProcess::setChildProcessModifier(): starts a program as a shell does, in its own process group and with no
// signal ignored, even if the tests run in the background or under nohup.
inline void startAsAShell()
{
    setpgid(0, 0);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGTSTP})
        std::signal(signal, SIG_DFL);
}

} // namespace calvorn::test
