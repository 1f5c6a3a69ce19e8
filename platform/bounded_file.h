// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// The maximum size of a file, in bytes.
inline constexpr qint64 kLargestFile = 16 << 20;

// The result of reading a whole file.
struct BoundedFile
{
    enum class State { Read, Missing, Refused };

    State state = State::Missing;
    QByteArray content; // if read
    QString reason;     // if refused: the reason, as a clause
};

// Reads a whole file without blocking. Rejects pipes, devices, folders, files larger than kLargestFile and files that
// change while being read. A name that starts with ":" refers to a resource compiled into the program.
BoundedFile readBounded(const QString &path);

} // namespace calvorn
