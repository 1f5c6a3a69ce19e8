// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>

namespace calvorn {

// Opens a regular file for reading. Throws RuntimeError(File) with a message that includes the path and the reason.
void openToRead(QFile &file);

} // namespace calvorn
