// SPDX-License-Identifier: MIT
#include "display/plot/plot_painter.h"

#include "display/plot/trace_styles.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kCaptionOffset = 2.0;  // user units between a frequency marker and its caption
constexpr double kCaptionMargin = 3.0;  // painter's units between a caption and the line to its right
constexpr double kCaptionPadding = 2.0; // painter's units
constexpr int kCaptionShade = 200;      // alpha of 255: the curve shows through

// Legend, painter's units.
constexpr double kLegendDistance = 6.0; // from the edges of the plot
constexpr double kLegendMargin = 4.0;   // between the edge of the legend and its texts
constexpr double kLegendLine = 26.0;    // length of the line sample

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
                                               {kAmplitudeMarkerColour, 0xFFAD1457},
                                               {kStoredStyles[0].colour, 0xFF1565C0},
                                               {kStoredStyles[1].colour, 0xFFB26A00},
                                               {kStoredStyles[2].colour, 0xFFA8487E},
                                               {kStoredStyles[3].colour, 0xFF3030A8},
                                               {kAverageStyle.colour, 0xFF404040},
                                               {kMaxHoldStyle.colour, 0xFF8A3A00},
                                               {kMinHoldStyle.colour, 0xFF00695C},
                                               {kLimitStyle.colour, 0xFFC62828}});

// Returns the part of a segment inside a rectangle with its corner at the origin; nullopt if the segment is outside.
std::optional<QLineF> insideOf(QSizeF extent, QPointF from, QPointF to)
{
    // Liang-Barsky clipping: the fractions of the segment at which it enters and leaves.
    double enters = 0.0;
    double leaves = 1.0;
    const auto cut = [&](double start, double way, double limit) {
        if (way == 0.0)
            return start >= 0.0 && start <= limit;
        const auto [first, last] = std::minmax({-start / way, (limit - start) / way});
        enters = std::max(enters, first);
        leaves = std::min(leaves, last);
        return enters <= leaves;
    };
    const QPointF way = to - from;
    if (!cut(from.x(), way.x(), extent.width()) || !cut(from.y(), way.y(), extent.height()))
        return std::nullopt;
    // Clamp the point, so that rounding errors do not move it off the edge.
    const auto at = [&](double part) {
        const QPointF point = from + part * way;
        return QPointF(std::clamp(point.x(), 0.0, extent.width()), std::clamp(point.y(), 0.0, extent.height()));
    };
    return QLineF(enters > 0.0 ? at(enters) : from, leaves < 1.0 ? at(leaves) : to);
}

// Splits a line at its gaps.
QList<QPolygonF> piecesOf(const QPolygonF &line)
{
    QList<QPolygonF> pieces;
    QPolygonF piece;
    for (const QPointF &point : line) {
        if (!std::isnan(point.y())) {
            piece.append(point);
        } else if (!piece.isEmpty()) {
            pieces.append(piece);
            piece.clear();
        }
    }
    if (!piece.isEmpty())
        pieces.append(piece);
    return pieces;
}

} // namespace

QColor inked(QRgb screenColour, GraphInk ink)
{
    if (ink == GraphInk::Screen)
        return QColor::fromRgb(screenColour);
    const auto known = std::ranges::find(kInks, screenColour, &InkPair::screen);
    // A light colour without an entry must still be visible on white.
    return known != kInks.end() ? QColor::fromRgb(known->paper) : QColor::fromRgb(screenColour).darker(250);
}

PlotPainter::PlotPainter(const PlotModel &model, const Surface &surface, GraphInk ink)
    : m_model(model)
    , m_surface(surface)
    , m_ink(ink)
{
}

double PlotPainter::snapped(double value) const
{
    return std::clamp(std::floor(value / m_surface.pixel), -kFarAway, kFarAway) * m_surface.pixel;
}

bool PlotPainter::isOnSurface(double position, double extent) const
{
    return position >= 0.0 && position < extent;
}

// Returns a line across the whole plot, snapped to the pixel grid so that it is sharp at any screen scale, or nullopt
// for a horizontal line outside the range. A line at the edge keeps its full thickness.
std::optional<QRectF> PlotPainter::stripeAt(QPointF user, bool upright) const
{
    const double width = m_surface.size.width();
    const double height = m_surface.size.height();
    const double thickness = m_surface.thickness;
    const QPointF at = m_model.scale.toPixel(user, m_surface.size, m_surface.pixel);
    if (upright)
        return QRectF(std::min(snapped(at.x()), width - thickness), 0.0, thickness, height);
    const double y = snapped(at.y());
    if (!isOnSurface(y, height))
        return std::nullopt;
    return QRectF(0.0, std::min(y, height - thickness), width, thickness);
}

void PlotPainter::paint(QPainter &painter) const
{
    if (m_surface.isRaster) {
        paintInPixels(painter);
    } else {
        paintBackground(painter);
        paintTraces(painter, m_model.moving);
        paintLive(painter);
    }
    paintLegend(painter);
    for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
        paintLine(painter, line(item));
    paintCaptions(painter);
}

void PlotPainter::paintBackground(QPainter &painter) const
{
    paintGrid(painter);
    for (const LimitLine &limit : m_model.limits)
        paintPlaced(painter, placedLimit(limit), limit.style);
    paintTraces(painter, m_model.traces);
}

void PlotPainter::paintTraces(QPainter &painter, const std::vector<PlotTrace> &traces) const
{
    for (const PlotTrace &trace : traces)
        for (const QPolygonF &piece : placedTrace(trace))
            paintPlaced(painter, piece, trace.style);
}

void PlotPainter::paintGrid(QPainter &painter) const
{
    painter.fillRect(QRectF(QPointF(), m_surface.size), inked(kGraphBackground, m_ink));
    for (const GridLine &grid : m_model.scale.gridLines())
        if (const auto stripe = stripeAt({grid.x1, grid.y1}, grid.x1 == grid.x2))
            painter.fillRect(*stripe, inked(grid.colour, m_ink));
}

void PlotPainter::paintPlaced(QPainter &painter, const QPolygonF &placed, const TraceStyle &style) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(inked(style.colour, m_ink), m_surface.curveWidth, style.line));
    for (const QPolygonF &run : runsOf(placed))
        painter.drawPolyline(run);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PlotPainter::paintLive(QPainter &painter) const
{
    if (!m_model.live)
        return;
    for (const QPolygonF &piece : piecesOf(placedCurve(m_model.live->amplitudes)))
        paintPlaced(painter, piece, m_model.live->style);
}

void PlotPainter::paintInPixels(QPainter &painter) const
{
    QImage background(m_surface.size.toSize(), QImage::Format_RGB32);
    QPainter inside(&background);
    paintBackground(inside);
    inside.end();
    PlotImage plot;
    plot.setGrid(background, m_surface.curveWidth);
    plot.setCurves(curvesInPixels());
    painter.drawImage(0, 0, plot.image());
}

// Shifts by half a pixel, because the origin of PlotImage is the centre of a pixel.
std::vector<PlotImage::Curve> PlotPainter::curvesInPixels() const
{
    std::vector<PlotImage::Curve> curves;
    for (const PlotTrace &trace : m_model.moving) {
        QPolygonF points = placedAtFrequencies(trace);
        if (points.size() > 1 && points.first().x() > points.last().x())
            std::ranges::reverse(points);
        points.translate(-0.5, -0.5);
        curves.push_back({std::move(points), inked(trace.style.colour, m_ink).rgb()});
    }
    if (m_model.live)
        curves.push_back({placedCurve(m_model.live->amplitudes).translated(-0.5, -0.5),
                          inked(m_model.live->style.colour, m_ink).rgb()});
    return curves;
}

QPointF PlotPainter::placed(QPointF user) const
{
    const QPointF at = m_model.scale.toPixel(user, m_surface.size, m_surface.pixel);
    return {at.x(), std::clamp(at.y(), -kFarAway, kFarAway)};
}

QPolygonF PlotPainter::placedCurve(std::span<const double> amplitudes) const
{
    // The mapping from user units to the surface is linear in x and y, so two points define the mapping.
    const QPointF origin = m_model.scale.toPixel({0.0, 0.0}, m_surface.size, m_surface.pixel);
    const QPointF unit = m_model.scale.toPixel({1.0, 1.0}, m_surface.size, m_surface.pixel) - origin;
    const double height = unit.y() * m_model.scale.factor(); // of 1 V or 1 dB
    QPolygonF placed;
    placed.reserve(static_cast<qsizetype>(amplitudes.size()));
    double x = origin.x();
    for (const double amplitude : amplitudes) {
        x += unit.x();
        placed.append({x, std::clamp(origin.y() + amplitude * height, -kFarAway, kFarAway)});
    }
    return placed;
}

QPolygonF PlotPainter::placedAtFrequencies(const PlotTrace &trace) const
{
    QPolygonF points;
    if (m_model.axis.step == 0.0)
        return points;
    points.reserve(static_cast<qsizetype>(trace.amplitudes.size()));
    double frequency = trace.axis.start;
    for (const double amplitude : trace.amplitudes) {
        points.append(placed({m_model.xOf(frequency), m_model.scale.yOfAmplitude(amplitude)}));
        frequency += trace.axis.step;
    }
    return points;
}

QList<QPolygonF> PlotPainter::placedTrace(const PlotTrace &trace) const
{
    return piecesOf(placedAtFrequencies(trace));
}

QPolygonF PlotPainter::placedLimit(const LimitLine &limit) const
{
    QPolygonF line;
    if (m_model.axis.step == 0.0)
        return line;
    for (const LimitLine::Point &point : limit.points)
        line.append(placed({m_model.xOf(point.frequency), m_model.scale.yOfAmplitude(point.amplitude)}));
    return line;
}

QList<QPolygonF> PlotPainter::runsOf(const QPolygonF &placed) const
{
    QList<QPolygonF> runs;
    QPolygonF run;
    const auto endRun = [&] {
        if (!run.isEmpty())
            runs.append(run);
        run.clear();
    };
    for (qsizetype i = 1; i < placed.size(); ++i) {
        const auto segment = insideOf(m_surface.size, placed[i - 1], placed[i]);
        if (segment) {
            if (run.isEmpty())
                run.append(segment->p1());
            run.append(segment->p2());
        }
        if (!segment || segment->p2() != placed[i])
            endRun();
    }
    endRun();
    return runs;
}

GraphLine PlotPainter::line(GraphItem item) const
{
    const MarkerSet::Line &marker = m_model.markers[item];
    const QRgb colour = item == GraphItem::M1 || item == GraphItem::M2   ? kFrequencyMarkerColour
                        : item == GraphItem::M3 || item == GraphItem::M4 ? kAmplitudeMarkerColour
                                                                         : kCursorColour;
    const double position = marker.position;
    if (isVertical(item))
        return {position, m_model.scale.top(), position, m_model.scale.bottom(), marker.isVisible, colour};
    const double y = m_model.scale.yOfAmplitude(position);
    return {0.0, y, GraphCoordinates::kWidth, y, marker.isVisible, colour};
}

void PlotPainter::paintLine(QPainter &painter, const GraphLine &line) const
{
    if (!line.visible)
        return;
    if (const auto stripe = stripeAt({line.x1, line.y1}, line.x1 == line.x2))
        painter.fillRect(*stripe, inked(line.colour, m_ink));
}

void PlotPainter::measureCaption(GraphLabel &caption, const QFont &font)
{
    const QFontMetricsF metrics(font);
    caption.layout.setText(caption.text);
    caption.layout.setTextFormat(Qt::PlainText);
    caption.layout.prepare(QTransform(), font);
    caption.size = {std::ceil(metrics.horizontalAdvance(caption.text)) + 2.0 * kCaptionPadding,
                    std::ceil(metrics.height())};
}

QRectF PlotPainter::legendRect(const QFont &font) const
{
    const QFontMetricsF metrics(font);
    double width = 0.0;
    const std::vector<LegendEntry> entries = m_model.legend();
    for (const LegendEntry &entry : entries)
        width = std::max(width, metrics.horizontalAdvance(entry.name));
    if (entries.empty())
        return {};
    const QSizeF size(std::min(std::ceil(width) + kLegendLine + 3.0 * kLegendMargin, m_surface.size.width() / 2.0),
                      std::ceil(metrics.height()) * static_cast<double>(entries.size()) + 2.0 * kLegendMargin);
    return {{std::floor(m_surface.size.width() - size.width() - kLegendDistance), kLegendDistance}, size};
}

void PlotPainter::paintLegend(QPainter &painter) const
{
    const QRectF place = legendRect(painter.font());
    if (place.isEmpty())
        return;
    QColor shade = inked(kGraphBackground, m_ink);
    shade.setAlpha(kCaptionShade);
    painter.fillRect(place, shade);
    const QFontMetricsF metrics(painter.font());
    const double height = std::ceil(metrics.height());
    double top = place.top() + kLegendMargin;
    for (const LegendEntry &entry : m_model.legend()) {
        const QRectF row(place.left() + kLegendMargin, top, place.width() - 2.0 * kLegendMargin, height);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(inked(entry.style.colour, m_ink), 2.0 * m_surface.thickness, entry.style.line));
        const double middle = row.center().y();
        painter.drawLine(QLineF(row.left(), middle, row.left() + kLegendLine, middle));
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(inked(entry.style.colour, m_ink));
        const QRectF text = row.adjusted(kLegendLine + kLegendMargin, 0.0, 0.0, 0.0);
        painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(entry.name, Qt::ElideRight, text.width()));
        top += height;
    }
}

// The captions of M1 and M2 are above the plot, where they do not hide the curve. Those of M3 and M4 are side by side,
// so that both are readable when the markers coincide.
void PlotPainter::placeCaption(GraphItem item, const GraphLine &line, GraphLabel &caption) const
{
    if (caption.text.isEmpty())
        return;
    const QSizeF extent = m_surface.size.expandedTo({1.0, 1.0});
    const bool second = item == GraphItem::M2 || item == GraphItem::M4;
    const double rowHeight = caption.size.height() / extent.height() * m_model.scale.height();
    const double columnWidth = caption.size.width() / extent.width() * GraphCoordinates::kWidth;
    if (isVertical(item)) {
        caption.left = line.x2 + kCaptionOffset;
        caption.top = m_model.scale.top() - rowHeight;
    } else {
        caption.left = (second ? 1.3 : 0.2) * columnWidth;
        caption.top = line.y1 - rowHeight / 2.0;
    }
}

QRectF PlotPainter::captionRect(GraphItem item, const GraphLine &line, const GraphLabel &caption) const
{
    const QSizeF extent = m_surface.size;
    const QPointF from = m_model.scale.toPixel({line.x1, line.y1}, extent, m_surface.pixel);
    const bool inside =
        isVertical(item) ? isOnSurface(from.x(), extent.width()) : isOnSurface(from.y(), extent.height());
    if (caption.text.isEmpty() || !line.visible || !inside)
        return {};
    QRectF place(m_model.scale.toPixel({caption.left, caption.top}, extent, m_surface.pixel), caption.size);
    if (place.right() > extent.width())
        place.moveRight(from.x() - kCaptionMargin);
    if (isVertical(item))
        place.moveBottom(0.0);
    else
        place.moveTop(std::clamp(place.top(), 0.0, std::max(extent.height() - place.height(), 0.0)));
    return place;
}

std::pair<QRectF, QRectF> PlotPainter::placesAbove(const GraphLabel &m1, const GraphLabel &m2) const
{
    const GraphLine firstLine = line(GraphItem::M1);
    const GraphLine secondLine = line(GraphItem::M2);
    std::pair places{captionRect(GraphItem::M1, firstLine, m1), captionRect(GraphItem::M2, secondLine, m2)};
    const bool firstIsLeft = firstLine.x1 <= secondLine.x1;
    QRectF &left = firstIsLeft ? places.first : places.second;
    QRectF &right = firstIsLeft ? places.second : places.first;
    // "left" and "right" refer to the lines, not to the positions of the captions.
    if (left.isEmpty() || right.isEmpty() || left.right() <= right.left())
        return places;
    const GraphLine &leftLine = firstIsLeft ? firstLine : secondLine;
    const QPointF at = m_model.scale.toPixel({leftLine.x1, leftLine.y1}, m_surface.size, m_surface.pixel);
    left.moveRight(std::min(at.x() - kCaptionMargin, right.left()));
    if (left.left() < 0.0) {
        left.moveLeft(0.0);
        right.moveLeft(std::max(right.left(), left.right()));
    }
    return places;
}

QString PlotPainter::captionOf(GraphItem item)
{
    switch (item) {
    case GraphItem::M1:
        return QStringLiteral("M1");
    case GraphItem::M2:
        return QStringLiteral("M2");
    case GraphItem::M3:
        return QStringLiteral("M3");
    case GraphItem::M4:
        return QStringLiteral("M4");
    case GraphItem::CursorV:
    case GraphItem::CursorH:
        break;
    }
    return {};
}

void PlotPainter::paintCaptions(QPainter &painter) const
{
    const auto laidOut = [&](GraphItem item) {
        GraphLabel caption;
        caption.text = captionOf(item);
        measureCaption(caption, painter.font());
        placeCaption(item, line(item), caption);
        return caption;
    };
    for (const GraphItem item : {GraphItem::M3, GraphItem::M4})
        paintCaption(painter, item, line(item), laidOut(item));
    const GraphLabel m1 = laidOut(GraphItem::M1);
    const GraphLabel m2 = laidOut(GraphItem::M2);
    const auto [first, second] = placesAbove(m1, m2);
    paintCaption(painter, first, line(GraphItem::M1), m1, false);
    paintCaption(painter, second, line(GraphItem::M2), m2, false);
}

void PlotPainter::paintCaption(QPainter &painter, GraphItem item, const GraphLine &line,
                               const GraphLabel &caption) const
{
    paintCaption(painter, captionRect(item, line, caption), line, caption, !isVertical(item));
}

void PlotPainter::paintCaption(QPainter &painter, const QRectF &place, const GraphLine &line, const GraphLabel &caption,
                               bool shaded) const
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
