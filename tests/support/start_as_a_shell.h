// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <initializer_list>
#include <unistd.h>

namespace calvorn::test {

// For QProcess::setChildProcessModifier(): as a shell starts a program. It has a group of its own and ignores no
// signal, also where the tests were started in the background or with nohup.
inline void startAsAShell()
{
    setpgid(0, 0);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGTSTP})
        std::signal(signal, SIG_DFL);
}

} // namespace calvorn::test
