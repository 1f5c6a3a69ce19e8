// SPDX-License-Identifier: MIT
#pragma once

// The directories and the file that replace /proc/sys/dev/parport, with and without a port. Nothing here calls a
// function that the library replaces.

#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <mutex>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#pragma GCC visibility push(hidden) // the program must not see these names
namespace lpt {

constexpr const char *treeParts[] = {"", "/none", "/one", "/one/parport0", "/one/parport0/devices"};
constexpr const char *addressPart = "/one/parport0/base-addr";

// Each process creates a separate tree, so a parent may exit before its child.
class Tree
{
public:
    // Returns the root of the tree, creating the tree on first use in each process.
    const char *root()
    {
        const std::lock_guard lock(m_mutex);
        if (m_owner != getpid())
            make();
        return m_root;
    }

    void remove()
    {
        if (m_owner == 0 || m_owner != getpid())
            return;
        char path[PATH_MAX];
        unlink(inTree(path, addressPart));
        for (size_t i = std::size(treeParts); i-- > 0;)
            rmdir(inTree(path, treeParts[i]));
    }

    void inChild() { new (&m_mutex) std::mutex; }

private:
    const char *inTree(char (&buffer)[PATH_MAX], const char *part) const
    {
        snprintf(buffer, sizeof buffer, "%s%s", m_root, part);
        return buffer;
    }

    void make()
    {
        m_owner = getpid();
        char path[PATH_MAX];
        const int saved = errno;
        const char *parent = getenv("TMPDIR");
        snprintf(m_root, sizeof m_root, "%s/lpt-board.XXXXXX", parent && *parent == '/' ? parent : "/tmp");
        if (!mkdtemp(m_root))
            strcpy(m_root, "/dev/null");
        for (const char *part : treeParts)
            mkdir(inTree(path, part), 0755);
        const long fd = syscall(SYS_openat, AT_FDCWD, inTree(path, addressPart), O_WRONLY | O_CREAT | O_CLOEXEC, 0444);
        syscall(SYS_write, fd, "888\t1912\n", 9);
        syscall(SYS_close, fd);
        errno = saved;
    }

    std::mutex m_mutex;
    char m_root[PATH_MAX / 2] = "";
    pid_t m_owner = 0;
};

} // namespace lpt
#pragma GCC visibility pop
