// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>

namespace calvorn {

// Opens a regular file for reading. Throws RuntimeError(File) with a sentence that names the file and the reason.
void openToRead(QFile &file);

} // namespace calvorn
