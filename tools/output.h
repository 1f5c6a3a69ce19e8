// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Whether the name stands for standard output, or for another open descriptor of this process: "-", "/dev/stdout",
// "/dev/fd/63", as a shell makes of >(command).
bool isDescriptor(const QString &path);
bool isStandardOutput(const QString &path);

// Writes a result where the user wants it: into a descriptor as it is, otherwise into an ordinary file, whole or not at
// all. RuntimeError(File) says where and why.
void writeResult(const QString &path, const QByteArray &content);

// Whether both names lead to the same file, also where it does not exist yet.
bool isSameFile(const QString &one, const QString &other);

} // namespace calvorn
