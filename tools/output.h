// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Returns true if the path refers to standard output or another open descriptor of this process: "-", "/dev/stdout", or
// "/dev/fd/63", which a shell passes for >(command).
bool isDescriptor(const QString &path);
bool isStandardOutput(const QString &path);

// Writes a result directly to a descriptor, or atomically replaces a regular file. Throws RuntimeError(File) with the
// path and the reason.
void writeResult(const QString &path, const QByteArray &content);

// Returns true if both paths refer to the same file, even if it does not exist yet.
bool isSameFile(const QString &one, const QString &other);

} // namespace calvorn
