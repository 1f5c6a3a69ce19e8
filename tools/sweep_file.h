// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "data/limit_lines.h"
#include "data/sweep_table.h"

#include <QString>

namespace calvorn {

// Thrown with an error message if a file named by the user cannot be used.
struct UnusableFile
{
    QString sentence;
};

// Like readSweepFile(), but prints a note to standard error if the amplitudes do not match the counts. Throws
// UnusableFile on failure.
void takeSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// Like takeSweepFile(), but returns a trace named after the file.
Trace traceOfFile(const QString &path, const Configuration &configuration);

// Throws UnusableFile if the limits cannot be read.
LimitLines limitsOfFile(const QString &path);

} // namespace calvorn
