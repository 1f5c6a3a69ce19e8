// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "data/sweep_table.h"

#include <QByteArray>
#include <QString>

namespace calvorn {

// Reads a sweep file (data/sweep_csv.h) into a table, like the "Import" command. If the amplitudes match the counts on
// any scale, converts them to the current scale; otherwise leaves them unchanged. Returns whether they match. Throws
// RuntimeError(File) with an error message if the file cannot be read, is not a sweep, or has unequally spaced
// frequencies; the table then contains the rows read so far.
bool readSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// Reads a sweep file into a trace named after the file. follows: receives the result of readSweepFile(); may be null.
Trace readTraceFile(const QString &path, Configuration configuration, bool *follows = nullptr);

// Returns a trace in the format of a sweep file, in the units of the configuration's scale. Gaps become 0. The trace
// must have 400 samples.
QByteArray traceAsCsv(const Trace &trace, Configuration configuration);

// Returns the name for a sweep read from a file: the file name without folder and extension.
QString traceName(const QString &path);

} // namespace calvorn
