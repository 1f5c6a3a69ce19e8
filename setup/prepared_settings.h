// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Returns the path of the settings embedded in the program: a simulated board on the parallel port, and a default
// configuration for each interface. Can be read with platform/profile_file.h.
QString preparedSettings();

// Whether the settings file at this path is missing or blank; false if it cannot be read.
bool isFirstStart(const QString &path);

// Writes the default configurations [Interface1] to [Interface3] and section [Simulator] of the prepared settings to
// the file. Returns false on failure.
bool writePreparedSections(const QString &path);

} // namespace calvorn
