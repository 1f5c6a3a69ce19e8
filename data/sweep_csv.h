// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QByteArray>

namespace calvorn {

// The sweep file: plain text, lines ended by CR LF. A header line, then for each row its number, frequency in Hz,
// detector count and amplitude x 1000; numbers bare, with "." whatever the locale and at most 15 digits.
// RuntimeError(TypeMismatch) when a cell holds no number.
QByteArray sweepAsCsv(const SweepTable &table);

} // namespace calvorn
