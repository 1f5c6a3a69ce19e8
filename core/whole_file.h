// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Writes a file whole or not at all: what stood under the name stays until all is written, also when the disk fills
// up or the power goes. RuntimeError(File) says which file and why.
void writeWholeFile(const QString &path, const QByteArray &content);

} // namespace calvorn
