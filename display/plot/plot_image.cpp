// SPDX-License-Identifier: MIT
#include "display/plot/plot_image.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calvorn {

namespace {

constexpr int kBandHeight = 32;      // pixels; changes are collected in bands of this height
constexpr int kWorthARectangle = 32; // unchanged columns; a wider gap starts a new rectangle
constexpr int kFullCover = 256;

// cover: 0 to kFullCover.
QRgb blended(QRgb ink, QRgb ground, int cover)
{
    const auto channel = [cover](int above, int below) { return below + (above - below) * cover / kFullCover; };
    return qRgb(channel(qRed(ink), qRed(ground)), channel(qGreen(ink), qGreen(ground)),
                channel(qBlue(ink), qBlue(ground)));
}

} // namespace

void PlotImage::setGrid(const QImage &grid, double thickness)
{
    m_image = grid.convertToFormat(QImage::Format_RGB32);
    m_thickness = thickness;
    m_layers.clear();
}

// Each layer stores the pixels below it, so layers are removed from the top down and painted from the bottom up. Layers
// below the lowest moving layer are not touched.
QRegion PlotImage::setCurves(std::span<const Curve> curves)
{
    const auto columns = static_cast<std::size_t>(m_image.width());
    while (m_layers.size() < curves.size())
        m_layers.push_back({{}, std::vector<Strip>(columns), {}, 0, std::vector<Strip>(columns), 0, false});
    for (std::size_t i = 0; i < m_layers.size(); ++i)
        place(i < curves.size() ? curves[i] : Curve(), m_layers[i]);
    QRegion changed = changedArea();
    const auto lowest = std::ranges::find(m_layers, true, &Layer::hasMoved) - m_layers.begin();
    const auto moving = std::span(m_layers).subspan(static_cast<std::size_t>(lowest));
    for (auto layer = moving.rbegin(); layer != moving.rend(); ++layer)
        takeAway(*layer);
    for (Layer &layer : moving) {
        layer.strips = layer.placed;
        layer.colour = layer.nextColour;
        layer.hasMoved = false;
        paint(layer);
    }
    m_layers.resize(curves.size());
    return changed;
}

void PlotImage::place(const Curve &curve, Layer &layer)
{
    layer.nextColour = curve.colour;
    layer.hasMoved = layer.colour != curve.colour;
    if (layer.points == curve.points)
        return;
    layer.points = curve.points;
    placeStrips(curve.points, layer.placed);
    layer.hasMoved = layer.hasMoved || layer.strips != layer.placed;
}

bool PlotImage::Layer::isSameAt(std::size_t column) const
{
    return strips[column] == placed[column] && (colour == nextColour || strips[column].isEmpty());
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

// QRegion stores its rectangles in horizontal bands, so changes are collected in bands from the start.
QRegion PlotImage::changedArea()
{
    m_bands.resize(static_cast<std::size_t>((m_image.height() + kBandHeight - 1) / kBandHeight));
    for (Band &band : m_bands)
        band.clear();
    m_moving.clear();
    for (const Layer &layer : m_layers)
        if (layer.hasMoved)
            m_moving.push_back(&layer);
    for (int column = 0; column < m_image.width(); ++column)
        for (const Layer *layer : m_moving)
            if (!layer->isSameAt(static_cast<std::size_t>(column)))
                addChange(column, *layer);
    std::vector<QRect> areas;
    for (const Band &band : m_bands)
        for (const Run &run : band.runs)
            areas.emplace_back(run.left, band.top, run.end - run.left, band.bottom - band.top);
    QRegion changed;
    changed.setRects(areas.data(), static_cast<int>(areas.size()));
    return changed;
}

void PlotImage::addChange(int column, const Layer &layer)
{
    const auto index = static_cast<std::size_t>(column);
    const Strip &before = layer.strips[index];
    const Strip &after = layer.placed[index];
    // A curve that moved only slightly changes one contiguous stretch of the column.
    if (!before.isEmpty() && !after.isEmpty() && before.first <= after.end && after.first <= before.end) {
        addChange(column, std::min(before.first, after.first), std::max(before.end, after.end));
        return;
    }
    addChange(column, before.first, before.end);
    addChange(column, after.first, after.end);
}

void PlotImage::addChange(int column, int first, int end)
{
    while (first < end) {
        const int band = first / kBandHeight;
        const int below = std::min(end, (band + 1) * kBandHeight);
        m_bands[static_cast<std::size_t>(band)].add(column, first, below);
        first = below;
    }
}

// A pixel column covers the part of the curve within half a line thickness of its centre.
void PlotImage::placeStrips(std::span<const QPointF> points, std::vector<Strip> &placed)
{
    std::vector<Reach> &reaches = m_reaches;
    reaches.assign(static_cast<std::size_t>(m_image.width()), Reach());
    const double half = m_thickness / 2.0;
    const int lastColumn = static_cast<int>(reaches.size()) - 1;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const QPointF from = points[i - 1];
        const QPointF to = points[i];
        if (std::isnan(from.y()) || std::isnan(to.y()))
            continue;
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
    placed.clear();
    for (const Reach &reach : reaches)
        placed.push_back(reach.highest <= reach.lowest ? stripOf(reach.highest, reach.lowest) : Strip());
}

// Along a column, a slanted line is higher than it is thick. The formula is exact for a straight line.
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
    strip.end = static_cast<int>(bottom);
    if (strip.end < bottom)
        ++strip.end;
    strip.firstCover = static_cast<int>((std::min(bottom, strip.first + 1.0) - top) * kFullCover);
    strip.lastCover = static_cast<int>((bottom - std::max(top, strip.end - 1.0)) * kFullCover);
    return strip;
}

void PlotImage::takeAway(const Layer &layer)
{
    const qsizetype pitch = pixelsOfARow();
    QRgb *top = reinterpret_cast<QRgb *>(m_image.bits());
    const QRgb *under = layer.under.data();
    for (const Strip &strip : layer.strips) {
        for (int row = strip.first; row < strip.end; ++row)
            top[row * pitch] = *under++;
        ++top;
    }
}

void PlotImage::paint(Layer &layer)
{
    const qsizetype pitch = pixelsOfARow();
    QRgb *top = reinterpret_cast<QRgb *>(m_image.bits());
    std::size_t covered = 0;
    for (const Strip &strip : layer.strips)
        covered += static_cast<std::size_t>(strip.end - strip.first);
    layer.under.resize(covered);
    QRgb *under = layer.under.data();
    for (const Strip &strip : layer.strips) {
        QRgb *pixel = top + strip.first * pitch;
        for (int row = strip.first; row < strip.end; ++row, pixel += pitch) {
            *under++ = *pixel;
            const int cover = row == strip.first     ? strip.firstCover
                              : row == strip.end - 1 ? strip.lastCover
                                                     : kFullCover;
            *pixel = cover == kFullCover ? layer.colour : blended(layer.colour, *pixel, cover);
        }
        ++top;
    }
}

qsizetype PlotImage::pixelsOfARow() const
{
    return m_image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
}

} // namespace calvorn
