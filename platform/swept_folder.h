// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace calvorn {

// A temporary folder for a running process, accessible only to this user. It is locked while in use (flock(2)).
// Creating another folder beside it removes any unlocked folders that killed processes have left behind.
//
// Paths are raw bytes because the system does not require them to be valid text.
class SweptFolder
{
public:
    SweptFolder() = default;
    ~SweptFolder();
    SweptFolder(const SweptFolder &) = delete;
    SweptFolder &operator=(const SweptFolder &) = delete;

    // Returns the possible parent folders in order of preference: the user's run-time folder (in memory, emptied at
    // logout), the folder that TMPDIR names, and the system's temporary folders.
    static QByteArrayList parents();

    // Removes the folders that killed processes left in `parent`, then creates this one there. On failure, returns
    // false and sets error() to errno.
    bool make(const QByteArray &parent);

    // Creates the folder in the first of parents() where this succeeds.
    bool makeAnywhere();

    int error() const { return m_error; }

    const QByteArray &path() const { return m_path; }

    // Removes the folder and its contents, if it exists.
    void remove();

private:
    static void sweep(const QByteArray &parent);
    bool makeLocked(const QByteArray &parent);

    QByteArray m_path;
    int m_lock = -1;
    int m_error = 0;
};

} // namespace calvorn
