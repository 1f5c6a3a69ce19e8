// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/graph_line.h"
#include "display/plot/plot_image.h"
#include "display/plot/plot_model.h"

#include <QColor>
#include <QFont>
#include <QPolygonF>
#include <QRect>

#include <optional>
#include <span>
#include <utility>

class QPainter;

namespace calvorn {

// Device pixels. Far outside any screen, but within the range of the rasteriser's fixed-point coordinates.
inline constexpr double kFarAway = 16000.0;

// Light lines on black, as on the screen, or dark lines on white paper.
enum class GraphInk { Screen, Paper };

// Returns the colour that replaces a screen colour in this ink.
QColor inked(QRgb screenColour, GraphInk ink);

// Paints a plot: grid, limits, curves, legend, marker lines and their captions. The screen, pictures and the printer
// all use this class; only the surface and the ink differ. On a raster surface, PlotImage draws the live curve and the
// moving curves, as on the screen.
class PlotPainter
{
public:
    // All in the painter's units. size: extent of the plot, with its upper left corner at the origin; pixel: grid to
    // which lines are snapped, so that they are sharp; thickness: line width, a whole number of pixels.
    struct Surface
    {
        QSizeF size;
        double pixel = 1.0;
        double thickness = 1.0;
        double curveWidth = 1.0;
        bool isRaster = false; // the painter's units are the pixels of an image
    };

    // The model must outlive the painter.
    PlotPainter(const PlotModel &model, const Surface &surface, GraphInk ink = GraphInk::Screen);

    // Paints everything except the cursor, with captions in the painter's font.
    void paint(QPainter &painter) const;

    // --- parts, for a screen that caches some of them ---

    // Paints the grid, the limits and the curves that do not change with every sweep.
    void paintBackground(QPainter &painter) const;
    // Returns the live curve and the moving curves for PlotImage. The painter's units must be pixels.
    std::vector<PlotImage::Curve> curvesInPixels() const;

    // The area of the legend in the upper right corner; empty if there are no entries.
    QRectF legendRect(const QFont &font) const;
    void paintLegend(QPainter &painter) const;

    // Returns one point for each amplitude (rows 1, 2, ...), including points outside the surface.
    QPolygonF placedCurve(std::span<const double> amplitudes) const;
    // Place a curve or a limit at its own frequencies; a curve yields one polygon for each piece between gaps.
    QList<QPolygonF> placedTrace(const PlotTrace &trace) const;
    QPolygonF placedLimit(const LimitLine &limit) const;
    // Returns the parts of a placed curve inside the surface: several if the curve leaves the surface and returns.
    QList<QPolygonF> runsOf(const QPolygonF &placed) const;

    // The line of a marker, or one of the cursor's lines.
    GraphLine line(GraphItem item) const;
    // Paints nothing if the line is hidden.
    void paintLine(QPainter &painter, const GraphLine &line) const;

    // "M1" to "M4"; empty for the cursor lines.
    static QString captionOf(GraphItem item);

    // Lay out a caption in a font and place it beside its line.
    static void measureCaption(GraphLabel &caption, const QFont &font);
    void placeCaption(GraphItem item, const GraphLine &line, GraphLabel &caption) const;
    // Returns the area of a caption: beside its line, moved inside the plot if it would be cut off; above the plot for
    // M1 and M2. Empty if the line is hidden or outside the range.
    QRectF captionRect(GraphItem item, const GraphLine &line, const GraphLabel &caption) const;
    void paintCaption(QPainter &painter, GraphItem item, const GraphLine &line, const GraphLabel &caption) const;

    // Returns the areas of the captions of M1 and M2. If they would overlap, the left line's caption moves to the left
    // of its line.
    std::pair<QRectF, QRectF> placesAbove(const GraphLabel &m1, const GraphLabel &m2) const;

    // Paints a caption in the given area, with or without a shaded background.
    void paintCaption(QPainter &painter, const QRectF &place, const GraphLine &line, const GraphLabel &caption,
                      bool shaded) const;

private:
    double snapped(double value) const;
    bool isOnSurface(double position, double extent) const;
    std::optional<QRectF> stripeAt(QPointF user, bool upright) const;
    QPointF placed(QPointF user) const;
    void paintGrid(QPainter &painter) const;
    void paintPlaced(QPainter &painter, const QPolygonF &placed, const TraceStyle &style) const;
    QPolygonF placedAtFrequencies(const PlotTrace &trace) const;
    void paintTraces(QPainter &painter, const std::vector<PlotTrace> &traces) const;
    void paintLive(QPainter &painter) const;
    void paintInPixels(QPainter &painter) const;
    void paintCaptions(QPainter &painter) const;

    const PlotModel &m_model;
    Surface m_surface;
    GraphInk m_ink;
};

} // namespace calvorn
