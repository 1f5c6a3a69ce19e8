// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>

namespace calvorn {

// Opens an ordinary file for reading. RuntimeError(File) with a sentence that names it and the reason.
void openToRead(QFile &file);

} // namespace calvorn
