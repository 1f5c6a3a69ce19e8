// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// The settings that come with the program, embedded in it: a simulated board on the parallel port, and a default
// configuration of each interface. Readable with platform/profile_file.h.
QString preparedSettings();

// Whether there is no settings file at this path, or a blank one. Not so where it cannot be read.
bool isFirstStart(const QString &path);

// Writes the default configurations [Interface1] to [Interface3] and the section [Simulator] of the prepared settings
// into the file. False when it cannot be written.
bool writePreparedSections(const QString &path);

} // namespace calvorn
