// SPDX-License-Identifier: MIT
#include "display/plot/graph_coordinates.h"

#include "core/scale_type.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kHeadroomDb = 10.0; // scales 2 and 4 extend above 0 dB
constexpr double kSmallestRangeDb = 1.0;
constexpr double kUnitsPerDb = 1000.0;

// If a range requires more lines of one kind (due to an invalid settings file), that kind is not drawn, because it
// would fill the plot with one colour.
constexpr double kMostLinesOfAKind = 200.0;

} // namespace

GraphCoordinates::GraphCoordinates(const Configuration &configuration)
    : m_linear(isLinearScale(configuration.scaleType))
{
    if (m_linear) {
        const auto volts = static_cast<double>(configuration.maxScaleVolt);
        m_fullScaleVolt = std::isfinite(volts) && volts > 0.0 ? volts : 1.0;
        // 0.2 % below full scale, so that a curve at full scale stays inside the frame.
        m_top = m_fullScaleVolt * 998.0;
        m_height = m_fullScaleVolt * -1000.0;
        return;
    }
    const double headroom = scaleHasHeadroom(configuration.scaleType) ? kHeadroomDb : 0.0;
    const double range = std::abs(static_cast<double>(configuration.maxScaleDb)) + headroom;
    m_top = -headroom * kUnitsPerDb;
    m_height = std::max(range, kSmallestRangeDb) * kUnitsPerDb;
}

double GraphCoordinates::labelPitch(double outerHeight) const
{
    return m_linear ? outerHeight / 4.0 : outerHeight * 10.0 * kUnitsPerDb / m_height;
}

QPointF GraphCoordinates::toPixel(QPointF user, QSizeF surface, double pixel) const
{
    return {pixel / 2.0 + user.x() / kWidth * (surface.width() - pixel),
            pixel / 2.0 + (user.y() - m_top) / m_height * (surface.height() - pixel)};
}

QPointF GraphCoordinates::toUser(QPointF position, QSizeF surface, double pixel) const
{
    const double width = std::max(surface.width() - pixel, pixel);
    const double height = std::max(surface.height() - pixel, pixel);
    return {(position.x() - pixel / 2.0) / width * kWidth, m_top + (position.y() - pixel / 2.0) / height * m_height};
}

std::vector<GridLine> GraphCoordinates::gridLines() const
{
    std::vector<GridLine> lines;
    addVerticalLines(lines);
    if (m_linear) {
        addLadder(lines, m_top, 0.0, m_height / 20.0, kMinorGridColour);
        addLadder(lines, m_top, 0.0, m_height / 4.0, kMajorGridColour);
    } else {
        addLadder(lines, -kHeadroomDb * kUnitsPerDb, m_height, 2.0 * kUnitsPerDb, kMinorGridColour);
        addLadder(lines, 0.0, m_height, 10.0 * kUnitsPerDb, kMajorGridColour);
    }
    lines.push_back({0.0, 0.0, kWidth, 0.0, kCentreColour});
    return lines;
}

void GraphCoordinates::addVerticalLines(std::vector<GridLine> &lines) const
{
    constexpr int kRowsPerMinor = 10;
    constexpr int kRowsPerMajor = 50;
    for (int row = 0; row <= kSweepPoints; row += kRowsPerMinor) {
        const QRgb colour = row == kSweepPoints / 2    ? kCentreColour
                            : row % kRowsPerMajor == 0 ? kMajorGridColour
                                                       : kMinorGridColour;
        const double x = row;
        lines.push_back({x, m_top, x, bottom(), colour});
    }
}

void GraphCoordinates::addLadder(std::vector<GridLine> &lines, double from, double to, double step, QRgb colour) const
{
    const double count = std::floor((to - from) / step) + 1.0;
    if (!(count <= kMostLinesOfAKind))
        return;
    for (int i = 0; i < static_cast<int>(count); ++i) {
        const double y = from + i * step;
        lines.push_back({0.0, y, kWidth, y, colour});
    }
}

} // namespace calvorn
