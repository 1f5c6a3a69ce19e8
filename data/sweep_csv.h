// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QByteArray>
#include <QIODevice>

namespace calvorn {

// Returns the contents of a sweep file: plain text with CR LF line endings; a header line, then one line per row with
// row number, frequency in Hz, detector count and amplitude x 1000. Numbers are unquoted, with "." in every locale and
// at most 15 digits. Throws RuntimeError(TypeMismatch) if a cell does not contain a number.
QByteArray sweepAsCsv(const SweepTable &table);

// A file may repeat rows before it reaches row 400; this limits the number of lines.
inline constexpr int kMostSweepLines = 100000;

// Reads a sweep file into the table's cells. The first field of each line is its row; reading stops after the line for
// row 400. Numbers are read according to the current locale. Throws RuntimeError if the file ends too early, a field is
// not a number, a row is outside 0 to 400, or there are more than kMostSweepLines lines; the table then contains the
// lines read so far. The caller must announce the new sweep.
// line: receives the number of the current line.
void readSweepCsv(QIODevice &device, SweepTable &table, int *line = nullptr);

} // namespace calvorn
