// SPDX-License-Identifier: MIT
#include "core/detector_law.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kOhms = 50.0;
constexpr double kWatts = 1e-3;
constexpr double kMillivolts = 1000.0; // in a volt

using Points = std::vector<DetectorLaw::Point>;

// Between two points the levels are a straight line over the decibels of the detector's volts, so that any power of the
// input comes out right; over the volts themselves where they are not above 0.
double dBmBetween(const DetectorLaw::Point &below, const DetectorLaw::Point &above, double volts)
{
    const double part = below.volts > 0.0 ? std::log(volts / below.volts) / std::log(above.volts / below.volts)
                                          : (volts - below.volts) / (above.volts - below.volts);
    return std::lerp(below.dBm, above.dBm, part);
}

double voltsBetween(const DetectorLaw::Point &below, const DetectorLaw::Point &above, double dBm)
{
    const double part = (dBm - below.dBm) / (above.dBm - below.dBm);
    return below.volts > 0.0 ? below.volts * std::pow(above.volts / below.volts, part)
                             : std::lerp(below.volts, above.volts, part);
}

double dBmOfTable(const Points &points, double volts)
{
    if (volts <= points.front().volts)
        return points.front().dBm;
    if (volts >= points.back().volts)
        return points.back().dBm;
    const auto above = std::ranges::lower_bound(points, volts, {}, &DetectorLaw::Point::volts);
    return dBmBetween(*std::prev(above), *above, volts);
}

double voltsOfTable(const Points &points, double dBm, bool rises)
{
    const DetectorLaw::Point &lowest = rises ? points.front() : points.back();
    const DetectorLaw::Point &highest = rises ? points.back() : points.front();
    if (dBm <= lowest.dBm)
        return lowest.volts;
    if (dBm >= highest.dBm)
        return highest.volts;
    const auto isBefore = [rises](double a, double b) { return rises ? a < b : a > b; };
    const auto above = std::ranges::lower_bound(points, dBm, isBefore, &DetectorLaw::Point::dBm);
    return voltsBetween(*std::prev(above), *above, dBm);
}

} // namespace

double voltsOfDbm(double dBm)
{
    return std::sqrt(kWatts * kOhms) * std::pow(10.0, dBm / 20.0);
}

double dBmOfVolts(double volts)
{
    return 20.0 * std::log10(std::max(volts, 0.0) / std::sqrt(kWatts * kOhms));
}

bool DetectorLaw::isUsable() const
{
    switch (kind) {
    case Kind::Linear:
        return true;
    case Kind::Log:
        return std::isfinite(slope) && slope != 0.0 && std::isfinite(intercept);
    case Kind::Table:
        break;
    }
    if (points.size() < kFewestPoints || points.size() > kMostPoints)
        return false;
    const auto isNumber = [](const Point &point) { return std::isfinite(point.volts) && std::isfinite(point.dBm); };
    return std::ranges::all_of(points, isNumber) && turningPoint() == 0;
}

std::size_t DetectorLaw::turningPoint() const
{
    for (std::size_t i = 1; i < points.size(); ++i) {
        const bool rises = points[1].dBm > points[0].dBm;
        const double change = points[i].dBm - points[i - 1].dBm;
        if (points[i].volts <= points[i - 1].volts || change == 0.0 || (change > 0.0) != rises)
            return i + 1;
    }
    return 0;
}

double DetectorLaw::inputVolts(double detectorVolts) const
{
    switch (kind) {
    case Kind::Linear:
        return detectorVolts;
    case Kind::Log:
        return voltsOfDbm(std::max(detectorVolts, 0.0) * kMillivolts / slope + intercept);
    case Kind::Table:
        return voltsOfDbm(dBmOfTable(points, detectorVolts));
    }
    return detectorVolts;
}

bool DetectorLaw::isBeyondEnds(double detectorVolts) const
{
    if (kind == Kind::Log)
        return detectorVolts < 0.0;
    return kind == Kind::Table && (detectorVolts < points.front().volts || detectorVolts > points.back().volts);
}

double DetectorLaw::detectorVolts(double inputVolts) const
{
    switch (kind) {
    case Kind::Linear:
        break;
    case Kind::Log:
        return std::max((dBmOfVolts(inputVolts) - intercept) * slope / kMillivolts, 0.0);
    case Kind::Table:
        return voltsOfTable(points, dBmOfVolts(inputVolts), isRising());
    }
    return inputVolts;
}

bool DetectorLaw::isRising() const
{
    switch (kind) {
    case Kind::Linear:
        break;
    case Kind::Log:
        return slope > 0.0;
    case Kind::Table:
        return points.back().dBm > points.front().dBm;
    }
    return true;
}

} // namespace calvorn
