// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace calvorn {

// Replaces a file completely or not at all: the old file remains until all data is written, even if the disk fills up
// or the power fails. Returns false, with the system's reason, on failure and for the path of a device, a pipe, a
// folder or a loop of links. A link to a file remains, and its target is replaced.
bool replaceFile(const QString &path, const QByteArray &content, QString *reason = nullptr);

} // namespace calvorn
