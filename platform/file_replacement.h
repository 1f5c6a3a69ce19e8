// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Replaces a file whole or not at all: what stood under the name stays until all is written, also when the disk fills
// up or the power goes. False, with the system's reason, when it could not, and for a name that is taken by a device, a
// pipe, a folder or a loop of links. A link to a file stays, and the file is replaced.
bool replaceFile(const QString &path, const QByteArray &content, QString *reason = nullptr);

} // namespace calvorn
