// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Whether the name stands for standard output or another open descriptor of this process: "-", "/dev/stdout", or
// "/dev/fd/63", which a shell passes for >(command).
bool isDescriptor(const QString &path);
bool isStandardOutput(const QString &path);

// Writes a result directly to a descriptor, or replaces an ordinary file as a whole. Throws RuntimeError(File) with the
// file and the reason.
void writeResult(const QString &path, const QByteArray &content);

// Whether both names stand for the same file, even if the file does not exist yet.
bool isSameFile(const QString &one, const QString &other);

} // namespace calvorn
