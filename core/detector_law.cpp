// SPDX-License-Identifier: MIT
#include "core/detector_law.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

namespace {

constexpr double kOhms = 50.0;
constexpr double kWatts = 1e-3;

using Points = std::vector<DetectorLaw::Point>;

double itself(double volts)
{
    return volts;
}

double logarithm(double volts)
{
    return std::log(volts);
}

double onLine(double x, double x0, double x1, double y0, double y1)
{
    return x1 > x0 ? std::lerp(y0, y1, (x - x0) / (x1 - x0)) : y1;
}

// Interpolates each inner point from its neighbours and returns the sum of the squared errors (dB²).
double errorOf(const Points &points, double (*abscissa)(double volts))
{
    double sum = 0.0;
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const DetectorLaw::Point &below = points[i - 1];
        const DetectorLaw::Point &above = points[i + 1];
        const double predicted =
            onLine(abscissa(points[i].volts), abscissa(below.volts), abscissa(above.volts), below.dBm, above.dBm);
        sum += (predicted - points[i].dBm) * (predicted - points[i].dBm);
    }
    return sum;
}

double clampedLevel(double dBm)
{
    return std::clamp(dBm, -DetectorLaw::kFarthestDbm, DetectorLaw::kFarthestDbm);
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
        return isSlope(slope) && isLevel(intercept);
    case Kind::Table:
        break;
    }
    return m_points.size() >= kFewestPoints && m_points.size() <= kMostPoints &&
           std::ranges::all_of(m_points, isPoint) && turningPoint() == 0;
}

bool DetectorLaw::isSlope(double millivolts)
{
    return std::abs(millivolts) >= kLeastSlope && std::abs(millivolts) <= kMostSlope;
}

bool DetectorLaw::isLevel(double dBm)
{
    return std::abs(dBm) <= kFarthestDbm;
}

bool DetectorLaw::isPoint(const Point &point)
{
    return std::abs(point.volts) <= kFarthestVolts && isLevel(point.dBm);
}

void DetectorLaw::setPoints(std::vector<Point> points)
{
    m_points = std::move(points);
    const bool hasLogarithms = std::ranges::all_of(m_points, [](const Point &point) { return point.volts > 0.0; });
    m_isOverLogarithm = hasLogarithms && errorOf(m_points, logarithm) < errorOf(m_points, itself);
}

std::size_t DetectorLaw::turningPoint() const
{
    for (std::size_t i = 1; i < m_points.size(); ++i) {
        const bool rises = m_points[1].dBm > m_points[0].dBm;
        const double change = m_points[i].dBm - m_points[i - 1].dBm;
        if (m_points[i].volts <= m_points[i - 1].volts || change == 0.0 || (change > 0.0) != rises)
            return i + 1;
    }
    return 0;
}

double DetectorLaw::abscissa(double volts) const
{
    return m_isOverLogarithm ? std::log(volts) : volts;
}

double DetectorLaw::dBmOfTable(double volts) const
{
    if (volts <= m_points.front().volts)
        return m_points.front().dBm;
    if (volts >= m_points.back().volts)
        return m_points.back().dBm;
    const auto above = std::ranges::lower_bound(m_points, volts, {}, &Point::volts);
    const auto below = std::prev(above);
    return onLine(abscissa(volts), abscissa(below->volts), abscissa(above->volts), below->dBm, above->dBm);
}

double DetectorLaw::voltsOfTable(double dBm) const
{
    const bool rises = isRising();
    const Point &lowest = rises ? m_points.front() : m_points.back();
    const Point &highest = rises ? m_points.back() : m_points.front();
    if (dBm <= lowest.dBm)
        return lowest.volts;
    if (dBm >= highest.dBm)
        return highest.volts;
    const auto isBefore = [rises](double a, double b) { return rises ? a < b : a > b; };
    const auto above = std::ranges::lower_bound(m_points, dBm, isBefore, &Point::dBm);
    const auto below = std::prev(above);
    const double part = (dBm - below->dBm) / (above->dBm - below->dBm);
    const double place = std::lerp(abscissa(below->volts), abscissa(above->volts), part);
    return m_isOverLogarithm ? std::exp(place) : place;
}

double DetectorLaw::inputVolts(double detectorVolts) const
{
    switch (kind) {
    case Kind::Linear:
        return detectorVolts;
    case Kind::Log:
        return voltsOfDbm(clampedLevel(std::max(detectorVolts, 0.0) * kMillivolts / slope + intercept));
    case Kind::Table:
        return voltsOfDbm(clampedLevel(dBmOfTable(detectorVolts)));
    }
    return detectorVolts;
}

bool DetectorLaw::isBeyondEnds(double detectorVolts) const
{
    if (kind == Kind::Log)
        return detectorVolts < 0.0;
    return kind == Kind::Table && (detectorVolts < m_points.front().volts || detectorVolts > m_points.back().volts);
}

double DetectorLaw::detectorVolts(double inputVolts) const
{
    switch (kind) {
    case Kind::Linear:
        break;
    case Kind::Log:
        return std::max((clampedLevel(dBmOfVolts(inputVolts)) - intercept) * slope / kMillivolts, 0.0);
    case Kind::Table:
        return voltsOfTable(dBmOfVolts(inputVolts));
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
        return m_points.back().dBm > m_points.front().dBm;
    }
    return true;
}

} // namespace calvorn
