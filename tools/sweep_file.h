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

// Reads a sweep file into a table of its own, as the window imports it. Amplitudes that follow from the counts, on
// whatever scale the file was written, become those of the scale in use; others stay as they are, and a line on
// standard error says so. UnusableFile where the file is not a sweep of equal distances.
void readSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// The same as a trace with the name of the file.
Trace traceOfFile(const QString &path, Configuration configuration);

// UnusableFile where the file holds no limits.
LimitLines readLimitFile(const QString &path);

// How the sweep of a file is called in legends.
QString traceName(const QString &path);

} // namespace calvorn
