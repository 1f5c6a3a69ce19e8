// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

namespace calvorn {

inline constexpr int kLadderLines = 11; // lines that can have a label

// Returns the label of a line of the amplitude ladder beside a plot, counted from the top of the scale: quarters of
// full scale in volts (i = 0 to 4) or steps of 10 dB (i = 0 to 10).
QString ladderText(const Configuration &configuration, int i);

// Returns the reference for 0 dB, for example "(Vref 10V)". "scale" is a number as in Configuration::scaleType.
QString referenceText(std::int16_t scale);

} // namespace calvorn
