// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// Returns the path of the settings embedded in the program: a simulated board on the parallel port, and a default
// configuration for each interface. Readable with platform/profile_file.h.
QString preparedSettings();

// Whether the settings file at this path is missing or blank. False if it cannot be read.
bool isFirstStart(const QString &path);

// Writes the default configurations [Interface1] to [Interface3] and the section [Simulator] of the prepared settings
// into the file. Returns false if that fails.
bool writePreparedSections(const QString &path);

} // namespace calvorn
