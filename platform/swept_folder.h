// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace calvorn {

// A folder for what a process needs while it runs, which only this user can enter. It is locked while it is in use
// (flock(2)), so that the next one that is made beside it knows a folder that a killed process has left behind, and
// removes it.
//
// Paths are the bytes of the system: nothing says that they are text.
class SweptFolder
{
public:
    SweptFolder() = default;
    ~SweptFolder();
    SweptFolder(const SweptFolder &) = delete;
    SweptFolder &operator=(const SweptFolder &) = delete;

    // Where to make one, in this order: the user's own run-time folder, which is in memory and emptied at log-out, the
    // folder for temporary files, and those of the system.
    static QByteArrayList parents();

    // Removes what killed processes left in that folder, and makes this one there. False when that cannot be done, with
    // the system's errno in error().
    bool make(const QByteArray &parent);

    // In the first of parents() where that is possible.
    bool makeAnywhere();

    int error() const { return m_error; }

    const QByteArray &path() const { return m_path; }

    // With all that is in it. Harmless where there is none.
    void remove();

private:
    static void sweep(const QByteArray &parent);
    bool makeLocked(const QByteArray &parent);

    QByteArray m_path;
    int m_lock = -1;
    int m_error = 0;
};

} // namespace calvorn
