// SPDX-License-Identifier: MIT
#include "display/graph_painter.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kCaptionOffset = 2.0;  // user units between a frequency marker and its caption
constexpr double kCaptionMargin = 3.0;  // painter's units between a caption and the line to its right
constexpr double kCaptionPadding = 2.0; // painter's units
constexpr int kCaptionShade = 200;      // of 255: the curve shines through

// Device pixels. Far outside any screen, and inside what the rasteriser's fixed-point coordinates hold.
constexpr double kFarAway = 16000.0;

struct InkPair
{
    QRgb screen;
    QRgb paper;
};

constexpr auto kInks = std::to_array<InkPair>({{kGraphBackground, 0xFFFFFFFF},
                                               {kMinorGridColour, 0xFFDDE6DD},
                                               {kMajorGridColour, 0xFFA3B8A3},
                                               {kCentreColour, 0xFFE08080},
                                               {kCurveColour, 0xFF0B3D91},
                                               {kFrequencyMarkerColour, 0xFF00796B},
                                               {kCursorColour, 0xFF000000},
                                               {kAmplitudeMarkerColour, 0xFFAD1457}});

// The part of a segment between two heights; none when it lies wholly above or below them.
std::optional<QLineF> insideHeights(QPointF from, QPointF to, double top, double bottom)
{
    const auto [upper, lower] = std::minmax({from.y(), to.y()});
    if (upper >= top && lower <= bottom)
        return QLineF(from, to);
    if (lower < top || upper > bottom)
        return std::nullopt;
    const auto cut = [top, bottom](QPointF point, QPointF other) {
        const double y = std::clamp(point.y(), top, bottom);
        if (y == point.y())
            return point;
        const double part = (y - point.y()) / (other.y() - point.y());
        return QPointF(point.x() + part * (other.x() - point.x()), y);
    };
    return QLineF(cut(from, to), cut(to, from));
}

} // namespace

QColor inked(QRgb screenColour, GraphInk ink)
{
    if (ink == GraphInk::Screen)
        return QColor::fromRgb(screenColour);
    const auto known = std::ranges::find(kInks, screenColour, &InkPair::screen);
    // A light colour without a pair of its own has to be seen on white.
    return known != kInks.end() ? QColor::fromRgb(known->paper) : QColor::fromRgb(screenColour).darker(250);
}

GraphPainter::GraphPainter(const GraphCoordinates &coordinates, const Surface &surface, GraphInk ink)
    : m_coordinates(coordinates)
    , m_surface(surface)
    , m_ink(ink)
{
}

double GraphPainter::snapped(double value) const
{
    return std::clamp(std::floor(value / m_surface.pixel), -kFarAway, kFarAway) * m_surface.pixel;
}

bool GraphPainter::isOnSurface(double position, double extent) const
{
    return position >= 0.0 && position < extent;
}

// A line across the whole plot, on whole grains: sharp at any screen scale. One outside the range is not seen; one on
// the edge keeps its thickness.
std::optional<QRectF> GraphPainter::stripeAt(QPointF user, bool upright) const
{
    const double width = m_surface.size.width();
    const double height = m_surface.size.height();
    const double thickness = m_surface.thickness;
    const QPointF at = m_coordinates.toPixel(user, m_surface.size, m_surface.pixel);
    if (upright)
        return QRectF(std::min(snapped(at.x()), width - thickness), 0.0, thickness, height);
    const double y = snapped(at.y());
    if (!isOnSurface(y, height))
        return std::nullopt;
    return QRectF(0.0, std::min(y, height - thickness), width, thickness);
}

void GraphPainter::paintGrid(QPainter &painter) const
{
    painter.fillRect(QRectF(QPointF(), m_surface.size), inked(kGraphBackground, m_ink));
    for (const GridLine &grid : m_coordinates.gridLines())
        if (const auto stripe = stripeAt({grid.x1, grid.y1}, grid.x1 == grid.x2))
            painter.fillRect(*stripe, inked(grid.colour, m_ink));
}

QPolygonF GraphPainter::placedCurve(std::span<const double> values) const
{
    // The way from user units to the surface is a straight line in both directions: two points give all.
    const QPointF origin = m_coordinates.toPixel({0.0, 0.0}, m_surface.size, m_surface.pixel);
    const QPointF unit = m_coordinates.toPixel({1.0, 1.0}, m_surface.size, m_surface.pixel) - origin;
    QPolygonF placed;
    placed.reserve(static_cast<qsizetype>(values.size()));
    double x = origin.x();
    for (const double value : values) {
        x += unit.x();
        placed.append({x, std::clamp(origin.y() + value * unit.y(), -kFarAway, kFarAway)});
    }
    return placed;
}

QList<QPolygonF> GraphPainter::runsOf(const QPolygonF &placed) const
{
    const double bottom = m_surface.size.height();
    const auto isInside = [bottom](QPointF point) { return point.y() >= 0.0 && point.y() <= bottom; };
    QList<QPolygonF> runs;
    QPolygonF run;
    const auto endRun = [&] {
        if (!run.isEmpty())
            runs.append(run);
        run.clear();
    };
    for (qsizetype i = 1; i < placed.size(); ++i) {
        if (const auto segment = insideHeights(placed[i - 1], placed[i], 0.0, bottom)) {
            if (run.isEmpty())
                run.append(segment->p1());
            run.append(segment->p2());
        }
        if (!isInside(placed[i]))
            endRun();
    }
    endRun();
    return runs;
}

void GraphPainter::paintCurve(QPainter &painter, const QPolygonF &placed) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(inked(kCurveColour, m_ink), m_surface.curveWidth));
    for (const QPolygonF &run : runsOf(placed))
        painter.drawPolyline(run);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void GraphPainter::paintLine(QPainter &painter, const GraphLine &line) const
{
    if (!line.visible)
        return;
    if (const auto stripe = stripeAt({line.x1, line.y1}, line.x1 == line.x2))
        painter.fillRect(*stripe, inked(line.colour, m_ink));
}

void GraphPainter::measureCaption(GraphLabel &caption, const QFont &font)
{
    const QFontMetricsF metrics(font);
    caption.layout.setText(caption.text);
    caption.layout.setTextFormat(Qt::PlainText);
    caption.layout.prepare(QTransform(), font);
    caption.size = {std::ceil(metrics.horizontalAdvance(caption.text)) + 2.0 * kCaptionPadding,
                    std::ceil(metrics.height())};
}

// Those of M1 and M2 stand above the plot, where they hide nothing. Those of M3 and M4 stand apart from each other, so
// that both are read where the markers coincide.
void GraphPainter::placeCaption(GraphItem item, const GraphLine &line, GraphLabel &caption) const
{
    if (caption.text.isEmpty())
        return;
    const QSizeF extent = m_surface.size.expandedTo({1.0, 1.0});
    const bool second = item == GraphItem::M2 || item == GraphItem::M4;
    const double rowHeight = caption.size.height() / extent.height() * m_coordinates.height();
    const double columnWidth = caption.size.width() / extent.width() * GraphCoordinates::kWidth;
    if (isVertical(item)) {
        caption.left = line.x2 + kCaptionOffset;
        caption.top = m_coordinates.top() - rowHeight;
    } else {
        caption.left = (second ? 1.3 : 0.2) * columnWidth;
        caption.top = line.y1 - rowHeight / 2.0;
    }
}

QRectF GraphPainter::captionRect(GraphItem item, const GraphLine &line, const GraphLabel &caption) const
{
    const QSizeF extent = m_surface.size;
    const QPointF from = m_coordinates.toPixel({line.x1, line.y1}, extent, m_surface.pixel);
    const bool inside =
        isVertical(item) ? isOnSurface(from.x(), extent.width()) : isOnSurface(from.y(), extent.height());
    if (caption.text.isEmpty() || !line.visible || !inside)
        return {};
    QRectF place(m_coordinates.toPixel({caption.left, caption.top}, extent, m_surface.pixel), caption.size);
    if (place.right() > extent.width())
        place.moveRight(from.x() - kCaptionMargin);
    if (isVertical(item))
        place.moveBottom(0.0);
    else
        place.moveTop(std::clamp(place.top(), 0.0, std::max(extent.height() - place.height(), 0.0)));
    return place;
}

void GraphPainter::separate(QRectF &first, const GraphLine &firstLine, QRectF &second,
                            const GraphLine &secondLine) const
{
    const bool firstIsLeft = firstLine.x1 <= secondLine.x1;
    QRectF &left = firstIsLeft ? first : second;
    QRectF &right = firstIsLeft ? second : first;
    // The left one belongs to the left line.
    if (left.isEmpty() || right.isEmpty() || left.right() <= right.left())
        return;
    const GraphLine &line = firstIsLeft ? firstLine : secondLine;
    const QPointF at = m_coordinates.toPixel({line.x1, line.y1}, m_surface.size, m_surface.pixel);
    left.moveRight(std::min(at.x() - kCaptionMargin, right.left()));
    if (left.left() >= 0.0)
        return;
    left.moveLeft(0.0);
    right.moveLeft(std::max(right.left(), left.right()));
}

void GraphPainter::paintCaption(QPainter &painter, GraphItem item, const GraphLine &line,
                                const GraphLabel &caption) const
{
    paintCaption(painter, captionRect(item, line, caption), line, caption, !isVertical(item));
}

void GraphPainter::paintCaption(QPainter &painter, const QRectF &place, const GraphLine &line,
                                const GraphLabel &caption, bool shaded) const
{
    if (place.isEmpty())
        return;
    if (shaded) {
        QColor shade = inked(kGraphBackground, m_ink);
        shade.setAlpha(kCaptionShade);
        painter.fillRect(place, shade);
    }
    painter.setPen(inked(line.colour, m_ink));
    painter.drawStaticText(place.topLeft() + QPointF(kCaptionPadding, 0.0), caption.layout);
}

} // namespace calvorn
