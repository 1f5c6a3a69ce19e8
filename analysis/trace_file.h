// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"
#include "core/configuration.h"

#include <QByteArray>
#include <QString>

namespace calvorn {

// Reads a sweep file (data/sweep_csv.h) beside the table. Its amplitudes are in the units of the record's scale; where
// they follow from its counts by the record's detector, the volts do. The name is that of the file, without folder and
// extension.
// RuntimeError(File) with the path where it cannot be read, is no sweep, or has frequencies at unequal distances.
Trace readTraceFile(const QString &path, const Configuration &configuration);

// The same trace as a sweep file, in the units of the record's scale. A gap becomes 0. The trace must have 400 samples.
QByteArray traceAsCsv(const Trace &trace, const Configuration &configuration);

} // namespace calvorn
