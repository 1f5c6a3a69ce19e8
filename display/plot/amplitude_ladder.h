// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

namespace calvorn {

inline constexpr int kLadderLines = 11; // that a label can stand at

// The text at a line of the ladder of amplitudes beside a plot: quarters of the full scale in volts, 0 to 4, or steps
// of 10 dB, 0 to 9, both counted from the top of the scale.
QString ladderText(const Configuration &configuration, int i);

// What 0 dB is, "(Vref 1V)" or "(Vref 10V)".
QString referenceText(const Configuration &configuration);

} // namespace calvorn
