// SPDX-License-Identifier: MIT
#include "platform/process_guard.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace calvorn {

bool endWithParent()
{
    const pid_t parent = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A parent that died between the two calls would never be noticed.
    return getppid() == parent;
}

} // namespace calvorn
