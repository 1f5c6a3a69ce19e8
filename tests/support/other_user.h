// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace calvorn::test {

// Returns whether this process runs as root, as tests with several users require. If not, prints a message.
inline bool isRoot()
{
    if (getuid() == 0)
        return true;
    qInfo("not tried: only root can be another user, too");
    return false;
}

// Starts a process as the user "nobody". The process opens a file or folder and holds a lock on it (flock(2)) while
// this object exists.
class ForeignLock
{
public:
    ForeignLock(const QString &path, int openFlags, int lock)
    {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            qFatal("no pipe");
        m_process = fork();
        if (m_process < 0)
            qFatal("no process");
        if (m_process == 0) {
            const char answer = becomeNobody() && locks(QFile::encodeName(path), openFlags, lock) ? 'y' : 'n';
            [[maybe_unused]] const ssize_t written = write(ends[1], &answer, 1);
            for (;;)
                pause();
        }
        // If the child dies before it answers, read() returns end of file.
        close(ends[1]);
        char answer = 'n';
        m_holds = read(ends[0], &answer, 1) == 1 && answer == 'y';
        close(ends[0]);
    }
    ~ForeignLock()
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    ForeignLock(const ForeignLock &) = delete;
    ForeignLock &operator=(const ForeignLock &) = delete;

    bool holds() const { return m_holds; }
    pid_t process() const { return m_process; }

private:
    static constexpr uid_t kNobody = 65534;

    static bool becomeNobody() { return setgid(kNobody) == 0 && setuid(kNobody) == 0; }
    static bool locks(const QByteArray &path, int openFlags, int lock)
    {
        const int file = open(path.constData(), openFlags, 0600);
        return file >= 0 && flock(file, lock | LOCK_NB) == 0;
    }

    pid_t m_process = -1;
    bool m_holds = false;
};

} // namespace calvorn::test
