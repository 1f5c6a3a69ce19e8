// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "data/sweep_table.h"

#include <QByteArray>
#include <QString>

namespace calvorn {

// Reads a sweep file (data/sweep_csv.h) into a table, like an import in the window. Amplitudes that follow from the
// counts, whatever scale the file was written on, are converted to the scale in use; others stay unchanged. Returns
// whether they follow. Throws RuntimeError(File) with a sentence if the file cannot be read, is not a sweep, or has
// unequally spaced frequencies; the table then contains what was read so far.
bool readSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// Reads a sweep file as a trace named after the file. follows: receives the result of readSweepFile(); may be null.
Trace readTraceFile(const QString &path, Configuration configuration, bool *follows = nullptr);

// Writes a trace as a sweep file, in the units of the configuration's scale. Gaps become 0. The trace must have 400
// samples.
QByteArray traceAsCsv(const Trace &trace, Configuration configuration);

// Returns the name for a sweep from a file: the file name without folder and extension.
QString traceName(const QString &path);

} // namespace calvorn
