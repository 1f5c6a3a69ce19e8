// SPDX-License-Identifier: MIT
#include "display/plot/plot_image.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calvorn {

namespace {

constexpr int kBandHeight = 32;      // of the bands into which what has changed is parted
constexpr int kWorthARectangle = 32; // columns without a change that are left out
constexpr int kFullCover = 256;

// cover: of kFullCover.
QRgb blended(QRgb ink, QRgb ground, int cover)
{
    const auto channel = [cover](int above, int below) { return below + (above - below) * cover / kFullCover; };
    return qRgb(channel(qRed(ink), qRed(ground)), channel(qGreen(ink), qGreen(ground)),
                channel(qBlue(ink), qBlue(ground)));
}

} // namespace

void PlotImage::setGrid(const QImage &grid, double thickness, QRgb curveColour)
{
    m_image = grid.convertToFormat(QImage::Format_RGB32);
    m_thickness = thickness;
    m_colour = curveColour;
    m_strips.assign(static_cast<std::size_t>(m_image.width()), Strip());
}

QRegion PlotImage::setCurve(std::span<const QPointF> points)
{
    placeStrips(points);
    QRegion changed = changedArea();
    takeCurveAway();
    m_strips.swap(m_placed);
    paintCurve();
    return changed;
}

void PlotImage::Band::clear()
{
    top = std::numeric_limits<int>::max();
    bottom = 0;
    runs.clear();
}

void PlotImage::Band::add(int column, int first, int end)
{
    top = std::min(top, first);
    bottom = std::max(bottom, end);
    if (runs.empty() || column - runs.back().end > kWorthARectangle)
        runs.push_back({column, column + 1});
    else
        runs.back().end = column + 1;
}

// A region keeps its rectangles in bands, one below the other: what has changed is gathered in such from the beginning.
QRegion PlotImage::changedArea()
{
    m_bands.resize(static_cast<std::size_t>((m_image.height() + kBandHeight - 1) / kBandHeight));
    for (Band &band : m_bands)
        band.clear();
    for (int column = 0; column < m_image.width(); ++column) {
        const Strip &shown = m_strips[static_cast<std::size_t>(column)];
        const Strip &placed = m_placed[static_cast<std::size_t>(column)];
        if (shown == placed)
            continue;
        for (const Strip *strip : {&shown, &placed}) {
            for (int row = strip->first; row < strip->end;) {
                Band &band = m_bands[static_cast<std::size_t>(row / kBandHeight)];
                const int below = std::min(strip->end, (row / kBandHeight + 1) * kBandHeight);
                band.add(column, row, below);
                row = below;
            }
        }
    }
    std::vector<QRect> areas;
    for (const Band &band : m_bands)
        for (const Run &run : band.runs)
            areas.emplace_back(run.left, band.top, run.end - run.left, band.bottom - band.top);
    QRegion changed;
    changed.setRects(areas.data(), static_cast<int>(areas.size()));
    return changed;
}

// Along x a pixel sees as much of the curve as a line is thick.
void PlotImage::placeStrips(std::span<const QPointF> points)
{
    struct Reach
    {
        double highest = std::numeric_limits<double>::infinity();
        double lowest = -std::numeric_limits<double>::infinity();
    };
    std::vector<Reach> reaches(m_strips.size());
    const double half = m_thickness / 2.0;
    const int lastColumn = static_cast<int>(reaches.size()) - 1;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const QPointF from = points[i - 1];
        const QPointF to = points[i];
        const double slope = (to.y() - from.y()) / (to.x() - from.x());
        const int first = std::max(static_cast<int>(from.x() - half + 1.0), 0);
        const int last = std::min(static_cast<int>(to.x() + half), lastColumn);
        for (int column = first; column <= last; ++column) {
            const double y1 = from.y() + (std::max(from.x(), column - half) - from.x()) * slope;
            const double y2 = from.y() + (std::min(to.x(), column + half) - from.x()) * slope;
            Reach &reach = reaches[static_cast<std::size_t>(column)];
            reach.highest = std::min(reach.highest, std::min(y1, y2));
            reach.lowest = std::max(reach.lowest, std::max(y1, y2));
        }
    }
    m_placed.clear();
    for (const Reach &reach : reaches)
        m_placed.push_back(reach.highest <= reach.lowest ? stripOf(reach.highest, reach.lowest) : Strip());
}

// A slanted line is higher, seen along a column, than it is thick: for a straight one this is exact.
PlotImage::Strip PlotImage::stripOf(double highest, double lowest) const
{
    const double middle = (highest + lowest) / 2.0 + 0.5;
    const double reach = lowest - highest;
    const double half = std::sqrt(reach * reach + m_thickness * m_thickness) / 2.0;
    const double height = m_image.height();
    const double top = std::clamp(middle - half, 0.0, height);
    const double bottom = std::clamp(middle + half, 0.0, height);
    if (top >= bottom)
        return {};
    Strip strip;
    strip.first = static_cast<int>(top);
    strip.end = static_cast<int>(std::ceil(bottom));
    strip.firstCover = static_cast<int>((std::min(bottom, strip.first + 1.0) - top) * kFullCover);
    strip.lastCover = static_cast<int>((bottom - std::max(top, strip.end - 1.0)) * kFullCover);
    return strip;
}

void PlotImage::takeCurveAway()
{
    const qsizetype pitch = pixelsOfARow();
    QRgb *top = reinterpret_cast<QRgb *>(m_image.bits());
    const QRgb *under = m_underTheCurve.data();
    for (const Strip &strip : m_strips) {
        for (int row = strip.first; row < strip.end; ++row)
            top[row * pitch] = *under++;
        ++top;
    }
}

void PlotImage::paintCurve()
{
    const qsizetype pitch = pixelsOfARow();
    QRgb *top = reinterpret_cast<QRgb *>(m_image.bits());
    m_underTheCurve.clear();
    for (const Strip &strip : m_strips) {
        for (int row = strip.first; row < strip.end; ++row) {
            QRgb &pixel = top[row * pitch];
            m_underTheCurve.push_back(pixel);
            const int cover = row == strip.first     ? strip.firstCover
                              : row == strip.end - 1 ? strip.lastCover
                                                     : kFullCover;
            pixel = cover == kFullCover ? m_colour : blended(m_colour, pixel, cover);
        }
        ++top;
    }
}

qsizetype PlotImage::pixelsOfARow() const
{
    return m_image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
}

} // namespace calvorn
