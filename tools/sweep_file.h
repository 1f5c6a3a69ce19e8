// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "data/limit_lines.h"
#include "data/sweep_table.h"

#include <QString>

namespace calvorn {

// Thrown with a sentence that says why a file named by the user cannot be used.
struct UnusableFile
{
    QString sentence;
};

// Like readSweepFile(), but notes on standard error if the amplitudes do not follow from the counts. Throws
// UnusableFile on failure.
void takeSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// Likewise, but returns a trace with the name of the file.
Trace traceOfFile(const QString &path, const Configuration &configuration);

// Throws UnusableFile if the file contains no limits.
LimitLines limitsOfFile(const QString &path);

} // namespace calvorn
