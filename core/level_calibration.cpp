// SPDX-License-Identifier: MIT
#include "core/level_calibration.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace calvorn {

std::optional<DetectorLaw> logLawOf(const std::vector<CalibrationPoint> &points)
{
    if (points.size() < kFewestLogPoints)
        return std::nullopt;
    const auto number = static_cast<double>(points.size());
    double meanLevel = 0.0;
    double meanVolts = 0.0;
    for (const CalibrationPoint &point : points) {
        meanLevel += point.dBm / number;
        meanVolts += point.volts / number;
    }
    double squares = 0.0;
    double products = 0.0;
    for (const CalibrationPoint &point : points) {
        squares += (point.dBm - meanLevel) * (point.dBm - meanLevel);
        products += (point.dBm - meanLevel) * (point.volts - meanVolts);
    }
    if (squares == 0.0 || products == 0.0)
        return std::nullopt;
    const double slope = products / squares; // volts per dB
    DetectorLaw law;
    law.kind = DetectorLaw::Kind::Log;
    law.slope = slope * kMillivolts;
    law.intercept = meanLevel - meanVolts / slope;
    return law.isUsable() ? std::optional(law) : std::nullopt;
}

std::optional<DetectorLaw> tableLawOf(std::vector<CalibrationPoint> points)
{
    if (points.size() < kFewestTablePoints)
        return std::nullopt;
    std::ranges::sort(points, {}, &CalibrationPoint::volts);
    DetectorLaw law;
    law.kind = DetectorLaw::Kind::Table;
    std::vector<DetectorLaw::Point> table;
    std::ranges::transform(points, std::back_inserter(table), [](const CalibrationPoint &point) {
        return DetectorLaw::Point{point.volts, point.dBm};
    });
    law.setPoints(std::move(table));
    return law.isUsable() ? std::optional(law) : std::nullopt;
}

double residualOf(const DetectorLaw &law, const CalibrationPoint &point)
{
    return dBmOfVolts(law.inputVolts(point.volts)) - point.dBm;
}

} // namespace calvorn
