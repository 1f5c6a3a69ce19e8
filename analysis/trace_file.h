// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "data/sweep_table.h"

#include <QByteArray>
#include <QString>

namespace calvorn {

// Reads a sweep file (data/sweep_csv.h) into a table, as the window imports it. Amplitudes that follow from the counts,
// on whatever scale the file was written, become those of the scale in use; others stay as they are. Returns whether
// they followed.
// RuntimeError(File) with a sentence where it cannot be read, is no sweep, or has frequencies at unequal distances; the
// table then holds what was read so far.
bool readSweepFile(const QString &path, Configuration &configuration, SweepTable &table);

// The same as a trace with the name of the file. follows: as above, where that is wanted.
Trace readTraceFile(const QString &path, Configuration configuration, bool *follows = nullptr);

// The same trace as a sweep file, in the units of the record's scale. A gap becomes 0. The trace must have 400 samples.
QByteArray traceAsCsv(const Trace &trace, Configuration configuration);

// How the sweep of a file is called: its name without folder and extension.
QString traceName(const QString &path);

} // namespace calvorn
