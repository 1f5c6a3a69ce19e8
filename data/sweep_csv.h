// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QByteArray>
#include <QIODevice>

namespace calvorn {

// Writes the sweep file: plain text with CR LF line ends, a header line, then for each row its number, frequency in
// Hz, detector count and amplitude x 1000. Numbers are unquoted, with "." in every locale and at most 15 digits.
// Throws RuntimeError(TypeMismatch) if a cell holds no number.
QByteArray sweepAsCsv(const SweepTable &table);

// A file may repeat rows before it reaches row 400; this limits the number of lines.
inline constexpr int kMostSweepLines = 100000;

// Reads a sweep file into the cells of the table. The first field of each line is its row; the line for row 400 is
// the last one read. Numbers are read by the current locale. Throws RuntimeError if the text ends too early, a field
// is not a number, a row is outside 0 to 400, or there are more than kMostSweepLines lines; the table then contains
// the lines read so far. The caller announces the new sweep.
// line: receives the number of the line being read.
void readSweepCsv(QIODevice &device, SweepTable &table, int *line = nullptr);

} // namespace calvorn
