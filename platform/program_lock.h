// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Held by the one running instance of a folder: a lock (flock(2)) on a file in it that nobody but its owner can open,
// so no other user can take it. The kernel releases it with the process; the file goes with the object, and one that a
// killed process has left does no harm.
class ProgramLock
{
public:
    explicit ProgramLock(const QString &folder);
    ~ProgramLock();
    ProgramLock(const ProgramLock &) = delete;
    ProgramLock &operator=(const ProgramLock &) = delete;

    // False when another instance of the same folder holds the lock. A folder that cannot be locked at all
    // (no right to write, a file system without locks) counts as ours: better two instances than none.
    bool isOurs() const { return m_ours; }

    // Who holds it, when that is another user: a sentence; empty otherwise. Only a folder that several users can write
    // has such holders. One on another computer, or in another container, is not seen.
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
