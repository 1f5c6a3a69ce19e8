// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Replaces a file completely or not at all: the old file remains until all data is written, even if the disk fills up
// or the power fails. Returns false and sets the reason on failure, or if the path names a device, a pipe, a folder or
// a loop of symbolic links. If the path is a symbolic link to a file, its target is replaced.
bool replaceFile(const QString &path, const QByteArray &content, QString *reason = nullptr);

} // namespace calvorn
