// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QStringList>

#include <array>
#include <vector>

namespace calvorn {

inline constexpr int kTextPlotColumns = 80;

// Draws the curve as text for a terminal, 80 columns wide, with amplitudes on the left and the first, middle and last
// frequency below. A volt scale starts at 0; a dB scale extends from the lowest to the highest value.
// linear: whether the table contains volts or dB. Throws RuntimeError(TypeMismatch) if an amplitude is not a number.
QStringList textPlot(const SweepTable &table, bool linear);

// Draws the given amplitudes, one for each row; gaps (NaN) remain blank.
// frequencies: the first, middle and last frequency, as displayed.
QStringList textPlot(const std::array<QString, 3> &frequencies, const std::vector<double> &amplitudes, bool linear);

} // namespace calvorn
