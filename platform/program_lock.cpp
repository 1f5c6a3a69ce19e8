// SPDX-License-Identifier: MIT
#include "platform/program_lock.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace calvorn {

namespace {

constexpr char kFile[] = "/.Calvorn.lock";
constexpr int kAttempts = 10; // in case other instances exit at the same time

// Returns the process that holds a lock on this file according to the kernel's lock list (proc(5)), or nullopt.
std::optional<pid_t> holderOf(const struct stat &file)
{
    QFile locks(QStringLiteral("/proc/locks"));
    if (!locks.open(QIODevice::ReadOnly))
        return std::nullopt;
    // "1: FLOCK  ADVISORY  WRITE 708 08:01:2359475 0 EOF"; for a blocked process, "->" follows the number.
    const QByteArray device = QByteArray::number(major(file.st_dev), 16).rightJustified(2, '0') + ':' +
                              QByteArray::number(minor(file.st_dev), 16).rightJustified(2, '0') + ':';
    const QByteArray node = ':' + QByteArray::number(qulonglong{file.st_ino});
    std::optional<pid_t> elsewhere;
    for (const QByteArray &line : locks.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() <= 5 || fields[1] != "FLOCK" || !fields[5].endsWith(node))
            continue;
        if (fields[5].startsWith(device))
            return fields[4].toInt();
        // Some file systems are listed with a different device number than stat(2) reports.
        elsewhere = fields[4].toInt();
    }
    return elsewhere;
}

// Returns an empty string if the process belongs to this user.
QString sentenceAbout(pid_t process)
{
    struct stat status = {};
    if (stat(("/proc/" + QByteArray::number(process)).constData(), &status) != 0 || status.st_uid == geteuid())
        return {};
    const passwd *user = getpwuid(status.st_uid);
    const QString name = user ? QString::fromLocal8Bit(user->pw_name) : QString::number(status.st_uid);
    return QCoreApplication::translate("ProgramLock", "It is process %1 of user %2.").arg(process).arg(name);
}

} // namespace

ProgramLock::ProgramLock(const QString &folder)
    : m_path(QFile::encodeName(folder) + kFile)
{
    for (int attempt = 0; attempt < kAttempts; ++attempt)
        if (take() == Attempt::Done)
            return;
}

ProgramLock::~ProgramLock()
{
    if (m_file < 0)
        return;
    // Unlink before releasing the lock, so that the next holder can tell that the file has been replaced.
    if (m_ours)
        unlink(m_path.constData());
    close(m_file);
}

ProgramLock::Attempt ProgramLock::take()
{
    m_file = open(m_path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (m_file < 0)
        return takeFromOther();
    struct stat opened = {};
    struct stat present = {};
    fstat(m_file, &opened);
    if (flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        m_ours = errno != EWOULDBLOCK;
        const std::optional<pid_t> process = m_ours ? std::nullopt : holderOf(opened);
        m_holder = process ? sentenceAbout(*process) : QString();
        return Attempt::Done;
    }
    if (stat(m_path.constData(), &present) == 0 && present.st_ino == opened.st_ino)
        return Attempt::Done;
    close(m_file);
    m_file = -1;
    return Attempt::Again;
}

// Called if the file cannot be opened because the folder is not writable or the file belongs to another user. A file
// that no process has locked was left by a killed instance.
ProgramLock::Attempt ProgramLock::takeFromOther()
{
    struct stat file = {};
    if (lstat(m_path.constData(), &file) != 0 || file.st_uid == geteuid())
        return Attempt::Done;
    const std::optional<pid_t> process = holderOf(file);
    if (!process)
        return unlink(m_path.constData()) == 0 ? Attempt::Again : Attempt::Done;
    m_ours = false;
    m_holder = sentenceAbout(*process);
    return Attempt::Done;
}

} // namespace calvorn
