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

void PlotImage::setGrid(const QImage &grid, double thickness)
{
    m_image = grid.convertToFormat(QImage::Format_RGB32);
    m_thickness = thickness;
    m_layers.clear();
}

// Each layer remembers what lies below it, so they go from the top down and come from the bottom up.
QRegion PlotImage::setCurves(std::span<const Curve> curves)
{
    const auto columns = static_cast<std::size_t>(m_image.width());
    while (m_layers.size() < curves.size())
        m_layers.push_back({std::vector<Strip>(columns), {}, 0, {}, 0});
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        placeStrips(i < curves.size() ? curves[i].points : QPolygonF(), m_layers[i].placed);
        m_layers[i].nextColour = i < curves.size() ? curves[i].colour : 0;
    }
    QRegion changed = changedArea();
    for (auto layer = m_layers.rbegin(); layer != m_layers.rend(); ++layer)
        takeAway(*layer);
    m_layers.resize(curves.size());
    for (Layer &layer : m_layers) {
        layer.strips.swap(layer.placed);
        layer.colour = layer.nextColour;
        paint(layer);
    }
    return changed;
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

// A region keeps its rectangles in bands, one below the other: what has changed is gathered in such from the beginning.
QRegion PlotImage::changedArea()
{
    m_bands.resize(static_cast<std::size_t>((m_image.height() + kBandHeight - 1) / kBandHeight));
    for (Band &band : m_bands)
        band.clear();
    for (int column = 0; column < m_image.width(); ++column)
        for (const Layer &layer : m_layers)
            if (!layer.isSameAt(static_cast<std::size_t>(column)))
                addChange(column, layer);
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
    for (const Strip *strip : {&layer.strips[index], &layer.placed[index]}) {
        for (int row = strip->first; row < strip->end;) {
            Band &band = m_bands[static_cast<std::size_t>(row / kBandHeight)];
            const int below = std::min(strip->end, (row / kBandHeight + 1) * kBandHeight);
            band.add(column, row, below);
            row = below;
        }
    }
}

// Along x a pixel sees as much of the curve as a line is thick.
void PlotImage::placeStrips(std::span<const QPointF> points, std::vector<Strip> &placed) const
{
    struct Reach
    {
        double highest = std::numeric_limits<double>::infinity();
        double lowest = -std::numeric_limits<double>::infinity();
    };
    std::vector<Reach> reaches(static_cast<std::size_t>(m_image.width()));
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
    layer.under.clear();
    for (const Strip &strip : layer.strips) {
        for (int row = strip.first; row < strip.end; ++row) {
            QRgb &pixel = top[row * pitch];
            layer.under.push_back(pixel);
            const int cover = row == strip.first     ? strip.firstCover
                              : row == strip.end - 1 ? strip.lastCover
                                                     : kFullCover;
            pixel = cover == kFullCover ? layer.colour : blended(layer.colour, pixel, cover);
        }
        ++top;
    }
}

qsizetype PlotImage::pixelsOfARow() const
{
    return m_image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
}

} // namespace calvorn
