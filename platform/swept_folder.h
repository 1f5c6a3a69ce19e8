// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace calvorn {

// A temporary folder of a running process, accessible only to this user. It is locked while in use (flock(2)); when
// another folder is made beside it, an unlocked one left by a killed process is recognised and removed.
//
// Paths are raw bytes, as the system does not require them to be text.
class SweptFolder
{
public:
    SweptFolder() = default;
    ~SweptFolder();
    SweptFolder(const SweptFolder &) = delete;
    SweptFolder &operator=(const SweptFolder &) = delete;

    // Returns the places for such a folder, in this order: the user's run-time folder (in memory, emptied at logout),
    // the folder for temporary files, and the system's temporary folders.
    static QByteArrayList parents();

    // Removes the folders that killed processes left in `parent`, then makes this one there. On failure, returns
    // false and sets error() to errno.
    bool make(const QByteArray &parent);

    // Makes the folder in the first of parents() that allows it.
    bool makeAnywhere();

    int error() const { return m_error; }

    const QByteArray &path() const { return m_path; }

    // Removes the folder with its contents. Does nothing if there is none.
    void remove();

private:
    static void sweep(const QByteArray &parent);
    bool makeLocked(const QByteArray &parent);

    QByteArray m_path;
    int m_lock = -1;
    int m_error = 0;
};

} // namespace calvorn
