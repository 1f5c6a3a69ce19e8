// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"

#include <optional>
#include <vector>

namespace calvorn {

// A level that is known, and what the detector made of it.
struct CalibrationPoint
{
    double dBm = 0.0;
    double volts = 0.0;  // of the detector, the mean of the readings
    double spread = 0.0; // volts, the standard deviation of the readings
};

// What is needed at least.
inline constexpr std::size_t kFewestLogPoints = 2;
inline constexpr std::size_t kFewestTablePoints = 3;

// The logarithmic law that fits the points best, by least squares of the volts; nothing with fewer than two, where
// their levels do not differ, or where slope or intercept would be outside the limits of a law.
std::optional<DetectorLaw> logLawOf(const std::vector<CalibrationPoint> &points);

// The table of the points, by rising volts; nothing with fewer than three or more than a table holds, or where the
// levels turn.
std::optional<DetectorLaw> tableLawOf(std::vector<CalibrationPoint> points);

// What the law makes of a point, less its level, dB.
double residualOf(const DetectorLaw &law, const CalibrationPoint &point);

} // namespace calvorn
