// SPDX-License-Identifier: MIT
// Preloaded by packaging/check-arm64. Under QEMU 7.2, waitid() supports P_PIDFD, but clone() rejects CLONE_PIDFD. Qt tests
// only the former, and then cannot start a process. If waitid() rejects P_PIDFD, Qt uses fork().
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdarg.h>
#include <sys/syscall.h>
#include <sys/wait.h>

long syscall(long number, ...)
{
    long arguments[6];
    va_list list;
    va_start(list, number);
    for (int i = 0; i < 6; ++i)
        arguments[i] = va_arg(list, long);
    va_end(list);
    if (number == SYS_waitid && arguments[0] == P_PIDFD) {
        errno = EINVAL;
        return -1;
    }
    long (*next)(long, ...) = (long (*)(long, ...))dlsym(RTLD_NEXT, "syscall");
    return next(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}
