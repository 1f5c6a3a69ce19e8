// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Replaces a file whole or not at all (platform/file_replacement.h). RuntimeError(File) says which file and why.
void writeWholeFile(const QString &path, const QByteArray &content);

} // namespace calvorn
