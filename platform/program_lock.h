// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// The lock of the one running instance in a folder: flock(2) on a file that only its owner can open, so other users
// cannot take it. The kernel releases the lock when the process ends. The destructor removes the file; a file left by
// a killed process is harmless.
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

    // Returns a sentence that names the holder if it belongs to another user; otherwise empty. This is possible only
    // in a folder that several users can write to. A holder on another computer or in another container is not
    // detected.
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
