// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"

#include <optional>
#include <vector>

namespace calvorn {

// A known level and the detector's reading of it.
struct CalibrationPoint
{
    double dBm = 0.0;
    double volts = 0.0;  // detector volts, mean of the readings
    double spread = 0.0; // volts, standard deviation of the readings
};

// Minimum numbers of points.
inline constexpr std::size_t kFewestLogPoints = 2;
inline constexpr std::size_t kFewestTablePoints = 3;

// Returns the logarithmic law with the least squared error in volts. Returns nullopt for fewer than two points, for
// points of equal level or equal volts, and if slope or intercept exceeds the limits of a law.
std::optional<DetectorLaw> logLawOf(const std::vector<CalibrationPoint> &points);

// Returns a table of the points, sorted by rising volts. Returns nullopt for fewer than three points, for more than a
// table can hold, and if the levels do not all rise or all fall.
std::optional<DetectorLaw> tableLawOf(std::vector<CalibrationPoint> points);

// Returns the level that the law computes for a point, minus its known level, in dB.
double residualOf(const DetectorLaw &law, const CalibrationPoint &point);

} // namespace calvorn
