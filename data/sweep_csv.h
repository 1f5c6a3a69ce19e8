// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QByteArray>
#include <QIODevice>

namespace calvorn {

// The sweep file: plain text, lines ended by CR LF. A header line, then for each row its number, frequency in Hz,
// detector count and amplitude x 1000; numbers bare, with "." whatever the locale and at most 15 digits.
// RuntimeError(TypeMismatch) when a cell holds no number.
QByteArray sweepAsCsv(const SweepTable &table);

// A file may repeat rows before it comes to row 400, but not for ever.
inline constexpr int kMostSweepLines = 100000;

// Reads a sweep file into the cells of the table. The row written is the one that a line's first field names; the
// line that names row 400 is the last. Numbers are read by the current locale.
// RuntimeError where the text ends too early, a field is no number, a row lies outside 0 to 400 or the lines do not
// end; the lines read so far are then in the table. The caller announces them.
// line: becomes the number of the line that is being read.
void readSweepCsv(QIODevice &device, SweepTable &table, int *line = nullptr);

} // namespace calvorn
