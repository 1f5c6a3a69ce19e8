// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// The largest file that is read whole, in bytes.
inline constexpr qint64 kLargestFile = 16 << 20;

// What reading a file whole has come to.
struct BoundedFile
{
    enum class State { Read, Missing, Refused };

    State state = State::Missing;
    QByteArray content; // when it was read
    QString reason;     // when it was refused: why, as a part of a sentence
};

// Reads a file at once, and never waits: a pipe, a device or a folder is refused, and so is what is larger than
// kLargestFile or changes while it is read. A name that begins with ":" is that of a resource of the program.
BoundedFile readBounded(const QString &path);

} // namespace calvorn
