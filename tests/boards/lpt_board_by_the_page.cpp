// SPDX-License-Identifier: MIT
//
// Simulates a PC parallel port with the measuring board, for tests without hardware.
//
// Preload this library (LD_PRELOAD). The program then finds port 0 at address 888 (0x378): /dev/parport0 answers the
// ppdev ioctls, and /proc/sys/dev/parport lists the port. The board sees nothing but the pin levels. The converter
// returns a count computed from the generator's tuning word; see Generator::count().
//
//   CALVORN_BOARD_LOG    log file, one line per event
//   CALVORN_BOARD_FAULT  file that contains busy, absent, gone, or hang with a number of milliseconds

#undef _FORTIFY_SOURCE
#undef _FILE_OFFSET_BITS
#include "tests/boards/lpt_chips.h"
#include "tests/boards/lpt_tree.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <mutex>
#include <new>
#include <thread>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/parport.h>
#include <linux/ppdev.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using namespace lpt;

// The libc function that this library replaces.
#define REAL(name)                                                                                                     \
    reinterpret_cast<decltype(&::name)>([] {                                                                           \
        static void *f = dlsym(RTLD_NEXT, #name);                                                                      \
        return f;                                                                                                      \
    }())

constinit Port port;
constinit FaultFile faults;
constinit std::mutex portMutex; // serializes the ioctls of all descriptors, even if one blocks

// ---- Open descriptors
// A session ends when its descriptor is closed and the last ioctl has returned.
struct Session
{
    std::atomic<int> users{0};
    std::atomic<pid_t> owner{0};
    std::atomic<bool> taken{false}, registered{false}, exclusive{false}, claimed{false}, dead{false};
};

constinit Session sessions[16];
constinit std::atomic<uint8_t> table[65536]; // descriptor -> session + 1

void leave(Session &s)
{
    if (s.users.fetch_sub(1) > 1)
        return;
    if (s.claimed.exchange(false))
        report("release");
    report("close");
    s.registered = s.exclusive = s.dead = false;
    s.taken = false;
}

Session *enter(int fd)
{
    const uint8_t number = fd >= 0 && fd < static_cast<int>(std::size(table)) ? table[fd].load() : 0;
    if (number == 0)
        return nullptr;
    Session &s = sessions[number - 1];
    int users = s.users;
    while (users > 0 && !s.users.compare_exchange_weak(users, users + 1)) {
    }
    if (users <= 0 || table[fd] == number)
        return users > 0 ? &s : nullptr;
    leave(s);
    return nullptr;
}

// Associates a real descriptor with the simulated port.
int adopt(int fd)
{
    for (size_t i = 0; fd >= 0 && i < std::size(sessions) && fd < static_cast<int>(std::size(table)); ++i) {
        if (sessions[i].taken.exchange(true))
            continue;
        sessions[i].owner = getpid();
        sessions[i].users = 1;
        report("open");
        table[fd] = static_cast<uint8_t>(i + 1);
        return fd;
    }
    if (fd >= 0) {
        syscall(SYS_close, fd);
        errno = EMFILE;
    }
    return -1;
}

int lookAtFault()
{
    return faults.look([](Fault now) {
        for (Session &s : sessions) // a descriptor that has lost its port stays dead
            s.dead = s.dead || (now == Gone && s.registered);
    });
}

// ---- The ioctls: 0 or a negative error number
// Unblocks signals only inside ppoll, so that every signal interrupts the wait.
int waitForPort(const Session &s)
{
    const auto holds = [&](const Session &other) { return &other != &s && other.claimed; };
    const timespec pause{0, 5000000};
    int result = 0;
    sigset_t all, old;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &old);
    while (result == 0 && ((lookAtFault() == Busy && !s.exclusive) || std::ranges::any_of(sessions, holds)))
        result = ppoll(nullptr, 0, &pause, &old) < 0 ? -EINTR : 0;
    pthread_sigmask(SIG_SETMASK, &old, nullptr);
    return s.dead ? -ENXIO : result;
}

int claim(Session &s)
{
    const int now = lookAtFault();
    if (s.claimed)
        return -EINVAL;
    const auto refuses = [&](const Session &o) { return &o != &s && o.registered && (s.exclusive || o.exclusive); };
    const bool taken = (s.exclusive && now == Busy) || std::ranges::any_of(sessions, refuses);
    if (now == Gone || s.dead || (taken && !s.registered))
        return -ENXIO;
    s.registered = true;
    const int result = waitForPort(s);
    if (result == 0) {
        s.claimed = true;
        report("claim");
        port.claimed();
    }
    return result;
}

int access(bool dead, uint32_t request, uint8_t *bytes)
{
    if (request == PPWDATA)
        std::this_thread::sleep_for(std::chrono::milliseconds(faults.takeHang()));
    switch (request) {
    case PPRDATA:
        bytes[0] = dead ? 0 : port.data();
        break;
    case PPRSTATUS:
        bytes[0] = dead ? 0 : port.status();
        break;
    case PPRCONTROL:
        bytes[0] = dead ? 0 : port.control();
        break;
    case PPWDATA:
        if (!dead)
            port.setData(bytes[0]);
        break;
    case PPWCONTROL:
        if (!dead)
            port.setControl(bytes[0]);
        break;
    default:
        if (!dead)
            port.setControl((port.control() & ~bytes[0]) ^ bytes[1]);
        break; // PPFCONTROL
    }
    return 0;
}

// Handles requests whose argument is an int or larger. Those in the first switch need no claim.
int setting(const Session &s, uint32_t request, int *number)
{
    switch (request) {
    case PPGETMODES:
        report("modes");
        *number = PARPORT_MODE_PCSPP | PARPORT_MODE_TRISTATE | PARPORT_MODE_ECP | PARPORT_MODE_COMPAT;
        return lookAtFault() == Gone || s.dead ? -ENODEV : 0;
    case PPGETMODE:
        *number = IEEE1284_MODE_COMPAT;
        return 0;
    case PPGETPHASE:
    case PPGETFLAGS:
        *number = 0;
        return 0;
    case PPSETMODE:
    case PPSETPHASE:
    case PPSETFLAGS:
        return 0;
    }
    if (!s.claimed)
        return -EINVAL;
    switch (request) {
    case PPNEGOT:
        return *number == IEEE1284_MODE_COMPAT ? 0 : -EIO; // the board does not negotiate
    case PPCLRIRQ:
        *number = 0;
        return 0;
    case PPSETTIME:
    case PPWCTLONIRQ:
        return 0;
    case PPDATADIR:
        if (!s.dead)
            port.setInput(*number != 0);
        return 0;
    }
    return -EINVAL;
}

int command(Session &s, uint32_t request, void *argument)
{
    static unsigned calls;
    const std::lock_guard lock(portMutex);
    if (++calls % 8 == 0)
        lookAtFault();
    switch (request) {
    case PPWDATA:
    case PPWCONTROL:
    case PPFCONTROL:
    case PPRDATA:
    case PPRSTATUS:
    case PPRCONTROL:
        if (!s.claimed)
            return -EINVAL;
        return argument ? access(s.dead, request, static_cast<uint8_t *>(argument)) : -EFAULT;
    case PPCLAIM:
        return claim(s);
    case PPEXCL:
        s.exclusive = s.exclusive || !s.registered;
        return s.exclusive ? 0 : -EINVAL;
    case PPRELEASE:
        if (!s.claimed.exchange(false))
            return -EINVAL;
        report("release");
        return 0;
    case PPYIELD:
        return s.claimed ? 0 : -EINVAL;
    default:
        return argument ? setting(s, request, static_cast<int *>(argument)) : -EFAULT;
    }
}

// ---- Paths
constinit Tree tree;

[[gnu::destructor]] void removeTree()
{
    tree.remove();
}

// Returns the part of the path after the prefix, or null if the path does not begin with the prefix.
const char *behind(const char *path, const char *prefix)
{
    const size_t length = strlen(prefix);
    return strncmp(path, prefix, length) == 0 && (!path[length] || path[length] == '/') ? path + length : nullptr;
}

// Maps a path that the program passes to the real path. If that is empty, the call fails.
struct Place
{
    const char *path;
    const bool isPort;
    char buffer[PATH_MAX];

    explicit Place(const char *given)
        : path(given)
        , isPort(given && behind(given, "/dev/parport0"))
    {
        if (isPort)
            path = lookAtFault() == Absent ? "" : "/dev/null";
        if (const char *rest = given ? behind(given, "/proc/sys/dev/parport") : nullptr) {
            snprintf(buffer, sizeof buffer, "%s%s%s", tree.root(), lookAtFault() == Absent ? "/none" : "/one", rest);
            path = buffer;
        }
    }
    operator const char *() const { return path; }
};

int openPath(int at, const char *path, int flags, mode_t mode = 0)
{
    const Place place(path);
    if (!place.isPort)
        return REAL(openat)(at, place, flags, mode);
    return adopt(REAL(openat)(at, place, flags & ~(O_CREAT | O_EXCL | O_TRUNC)));
}

// A forked child has copies of the sessions and may close them. The extra user keeps these closes out of the log.
void inChild()
{
    new (&portMutex) std::mutex;
    faults.inChild();
    tree.inChild();
    for (Session &s : sessions) {
        s.owner = getpid();
        s.users += s.taken ? 1 : 0;
    }
}

[[gnu::constructor]] void prepare()
{
    pthread_atfork(nullptr, nullptr, inChild);
}

} // namespace

// ---- Functions that the program calls
extern "C" {

#define OPEN(declaration, at)                                                                                          \
    int declaration                                                                                                    \
    {                                                                                                                  \
        va_list list;                                                                                                  \
        va_start(list, flags);                                                                                         \
        const mode_t mode = (flags & (O_CREAT | __O_TMPFILE)) ? va_arg(list, mode_t) : 0;                              \
        va_end(list);                                                                                                  \
        return openPath(at, path, flags, mode);                                                                        \
    }
OPEN(open(const char *path, int flags, ...), AT_FDCWD)
OPEN(open64(const char *path, int flags, ...), AT_FDCWD)
OPEN(openat(int at, const char *path, int flags, ...), at)
OPEN(openat64(int at, const char *path, int flags, ...), at)
int __open_2(const char *path, int flags)
{
    return openPath(AT_FDCWD, path, flags);
}
int __open64_2(const char *path, int flags)
{
    return openPath(AT_FDCWD, path, flags);
}
int __openat_2(int at, const char *path, int flags)
{
    return openPath(at, path, flags);
}
int __openat64_2(int at, const char *path, int flags)
{
    return openPath(at, path, flags);
}

// The child of a vfork shares our memory, so its close() must not change our state.
int close(int fd)
{
    Session *s = enter(fd);
    const bool last = s && s->owner == getpid() && table[fd].exchange(0) != 0;
    const int result = REAL(close)(fd);
    if (last)
        leave(*s);
    if (s)
        leave(*s);
    return result;
}

int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list list;
    va_start(list, request);
    void *argument = va_arg(list, void *);
    va_end(list);
    Session *s = enter(fd);
    if (!s)
        return REAL(ioctl)(fd, request, argument);
    int result = 0;
    if (_IOC_TYPE(request) == PP_IOCTL)
        result = command(*s, static_cast<uint32_t>(request), argument);
    else if (REAL(ioctl)(fd, request, argument) != 0)
        result = errno == ENOTTY ? -EINVAL : -errno;
    leave(*s);
    if (result < 0)
        errno = -result;
    return result < 0 ? -1 : 0;
}

int stat(const char *path, struct stat *info) noexcept
{
    return REAL(stat)(Place(path), info);
}
int stat64(const char *path, struct stat64 *info) noexcept
{
    return REAL(stat64)(Place(path), info);
}
int lstat(const char *path, struct stat *info) noexcept
{
    return REAL(lstat)(Place(path), info);
}
int lstat64(const char *path, struct stat64 *info) noexcept
{
    return REAL(lstat64)(Place(path), info);
}
int fstatat(int at, const char *path, struct stat *info, int flags) noexcept
{
    return REAL(fstatat)(at, Place(path), info, flags);
}
int fstatat64(int at, const char *path, struct stat64 *info, int flags) noexcept
{
    return REAL(fstatat64)(at, Place(path), info, flags);
}
int statx(int at, const char *path, int flags, unsigned mask, struct statx *info) noexcept
{
    return REAL(statx)(at, Place(path), flags, mask, info);
}
int access(const char *path, int mode) noexcept
{
    return REAL(access)(Place(path), mode);
}
int faccessat(int at, const char *path, int mode, int flags) noexcept
{
    return REAL(faccessat)(at, Place(path), mode, flags);
}
DIR *opendir(const char *path)
{
    return REAL(opendir)(Place(path));
}
FILE *fopen(const char *path, const char *mode)
{
    return REAL(fopen)(Place(path), mode);
}
FILE *fopen64(const char *path, const char *mode)
{
    return REAL(fopen64)(Place(path), mode);
}
}
