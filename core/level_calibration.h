// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"

#include <optional>
#include <vector>

namespace calvorn {

// A known level and the corresponding detector reading.
struct CalibrationPoint
{
    double dBm = 0.0;
    double volts = 0.0;  // detector volts, mean of the readings
    double spread = 0.0; // volts, standard deviation of the readings
};

// Minimum numbers of points.
inline constexpr std::size_t kFewestLogPoints = 2;
inline constexpr std::size_t kFewestTablePoints = 3;

// Returns the logarithmic law that fits the points best (least squares in volts). Returns nullopt if there are fewer
// than two points, if all levels or all voltages are equal, or if slope or intercept is outside its limits.
std::optional<DetectorLaw> logLawOf(const std::vector<CalibrationPoint> &points);

// Returns a table of the points, sorted by increasing voltage. Returns nullopt if there are fewer than three points or
// more than a table can hold, or if the levels neither all rise nor all fall.
std::optional<DetectorLaw> tableLawOf(std::vector<CalibrationPoint> points);

// Returns the level that the law computes for a point, minus its known level, in dB.
double residualOf(const DetectorLaw &law, const CalibrationPoint &point);

} // namespace calvorn
