// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Held by the one running instance of a program folder. The lock lies on the folder itself (flock(2) on the
// directory), so nothing is written, a read-only folder works, and the kernel releases it with the process.
class ProgramLock
{
public:
    explicit ProgramLock(const QString &programFolder);
    ~ProgramLock();
    ProgramLock(const ProgramLock &) = delete;
    ProgramLock &operator=(const ProgramLock &) = delete;

    // False when another instance of the same folder holds the lock. A folder that cannot be locked at all
    // (a file system without locks) counts as ours: better two instances than none.
    bool isOurs() const { return m_ours; }

private:
    int m_descriptor = -1;
    bool m_ours = true;
};

} // namespace calvorn
