// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Limits a folder to one running instance, with flock(2) on a file that only its owner can open, so other users cannot
// lock it. The kernel releases the lock when the process exits. The destructor removes the file; a file left by a
// killed process is harmless.
class ProgramLock
{
public:
    explicit ProgramLock(const QString &folder);
    ~ProgramLock();
    ProgramLock(const ProgramLock &) = delete;
    ProgramLock &operator=(const ProgramLock &) = delete;

    // Returns false if another instance in the same folder holds the lock. Returns true if the folder cannot be
    // locked at all (no write permission, a file system without locks): two instances are better than none.
    bool isOurs() const { return m_ours; }

    // Returns a message that names the lock holder if it belongs to another user, otherwise an empty string. This can
    // happen only in a folder that several users can write to. A holder on another computer or in another container
    // is not detected.
    QString holder() const { return m_holder; }

private:
    enum class Attempt { Done, Again };

    Attempt take();
    Attempt takeFromOther();

    QByteArray m_path;
    int m_file = -1;
    bool m_ours = true;
    QString m_holder;
};

} // namespace calvorn
