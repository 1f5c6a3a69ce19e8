// SPDX-License-Identifier: MIT
#include "platform/swept_folder.h"

#include <QtGlobal>

#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace calvorn {

namespace {

constexpr char kName[] = "calvorn-run-";
constexpr char kPattern[] = "calvorn-run-XXXXXX";
constexpr int kAttempts = 20; // in case another process sweeps the folder before it is locked

// Locks the folder and returns its descriptor. Returns a negative number and sets errno if the path is not an unlocked
// folder that belongs to this user.
int lockUnused(const QByteArray &path)
{
    const int folder = open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return -1;
    struct stat status = {};
    int error = 0;
    if (fstat(folder, &status) != 0 || flock(folder, LOCK_EX | LOCK_NB) != 0)
        error = errno;
    else if (status.st_uid != geteuid())
        error = EPERM;
    if (error == 0)
        return folder;
    close(folder);
    errno = error;
    return -1;
}

void removeFolder(const QByteArray &path)
{
    // The first attempt fails if the D-Bus library removes its socket at the same time.
    std::error_code error;
    for (int attempt = 0; attempt == 0 || (error && attempt < kAttempts); ++attempt)
        std::filesystem::remove_all(path.toStdString(), error);
}

} // namespace

SweptFolder::~SweptFolder()
{
    remove();
}

QByteArrayList SweptFolder::parents()
{
    QByteArrayList folders;
    for (const QByteArray &folder :
         {qgetenv("XDG_RUNTIME_DIR"), qgetenv("TMPDIR"), QByteArray("/tmp"), QByteArray("/var/tmp")})
        if (folder.startsWith('/') && !folders.contains(folder))
            folders.append(folder);
    return folders;
}

bool SweptFolder::makeAnywhere()
{
    for (const QByteArray &parent : parents())
        if (make(parent))
            return true;
    return false;
}

bool SweptFolder::make(const QByteArray &parent)
{
    sweep(parent);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (makeLocked(parent))
            return true;
        if (m_error != 0)
            return false;
    }
    m_error = EAGAIN;
    return false;
}

// Returns false without an error if another process has swept the new folder.
bool SweptFolder::makeLocked(const QByteArray &parent)
{
    QByteArray path = parent + '/' + kPattern;
    m_error = mkdtemp(path.data()) ? 0 : errno;
    if (m_error != 0)
        return false;
    m_lock = lockUnused(path);
    if (m_lock < 0) {
        m_error = errno == EWOULDBLOCK || errno == ENOENT ? 0 : errno;
        rmdir(path.constData());
        return false;
    }
    struct stat status = {};
    if (fstat(m_lock, &status) != 0 || status.st_nlink == 0) {
        close(m_lock);
        m_lock = -1;
        return false;
    }
    m_path = path;
    return true;
}

void SweptFolder::remove()
{
    if (m_lock < 0)
        return;
    removeFolder(m_path);
    close(m_lock);
    m_lock = -1;
}

void SweptFolder::sweep(const QByteArray &parent)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(parent.constData()), closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        const QByteArray name(entry->d_name);
        if (!name.startsWith(kName) || name.size() != qsizetype(sizeof kPattern) - 1)
            continue;
        const QByteArray path = parent + '/' + name;
        const int folder = lockUnused(path);
        if (folder < 0)
            continue;
        removeFolder(path);
        close(folder);
    }
}

} // namespace calvorn
