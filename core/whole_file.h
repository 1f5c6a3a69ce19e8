// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Replaces a file atomically (platform/file_replacement.h). Throws RuntimeError(File) with the path and the reason.
void writeWholeFile(const QString &path, const QByteArray &content);

} // namespace calvorn
