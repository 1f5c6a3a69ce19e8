// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "data/limit_lines.h"
#include "data/sweep_table.h"

#include <QString>

namespace calvorn {

// Why a file that the user named cannot be used, in a sentence.
struct UnusableFile
{
    QString sentence;
};

// As readSweepFile(), with a line on standard error where the amplitudes do not follow from the counts. UnusableFile
// where it cannot.
void takeSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// The same as a trace with the name of the file.
Trace traceOfFile(const QString &path, const Configuration &configuration);

// UnusableFile where the file holds no limits.
LimitLines limitsOfFile(const QString &path);

} // namespace calvorn
