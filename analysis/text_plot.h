// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QStringList>

#include <array>
#include <vector>

namespace calvorn {

inline constexpr int kTextPlotColumns = 80;

// Draws the curve as lines of characters for a terminal, 80 columns wide, with amplitudes on the left and the first,
// middle and last frequency below. Volts start at 0; dB range from the lowest to the highest value.
// linear: the table holds volts, otherwise dB. Throws RuntimeError(TypeMismatch) if an amplitude is not a number.
QStringList textPlot(const SweepTable &table, bool linear);

// Draws any amplitudes, one for each row; gaps (NaN) stay blank.
// frequencies: the first, middle and last one, as displayed.
QStringList textPlot(const std::array<QString, 3> &frequencies, const std::vector<double> &amplitudes, bool linear);

} // namespace calvorn
