// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Replaces a file completely or not at all (platform/file_replacement.h). Throws RuntimeError(File) with the file and
// the reason.
void writeWholeFile(const QString &path, const QByteArray &content);

} // namespace calvorn
