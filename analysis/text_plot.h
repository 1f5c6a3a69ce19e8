// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QStringList>

#include <array>
#include <vector>

namespace calvorn {

inline constexpr int kTextPlotColumns = 80;

// The curve in letters, for a terminal: the lines of a plot that is 80 columns wide, with its amplitudes to the left
// and the first, middle and last frequency below. Volts begin at 0; dB reach from the lowest to the highest value.
// linear: the table holds volts, otherwise dB. RuntimeError(TypeMismatch) when an amplitude is no number.
QStringList textPlot(const SweepTable &table, bool linear);

// The same of any amplitudes, one for each row; a gap (not a number) stays blank.
// frequencies: the first, middle and last one, as they are shown.
QStringList textPlot(const std::array<QString, 3> &frequencies, const std::vector<double> &amplitudes, bool linear);

} // namespace calvorn
