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

// Light lines on black, as on the screen, or dark ones on white paper.
enum class GraphInk { Screen, Paper };

// The colour that stands for one of the screen's.
QColor inked(QRgb screenColour, GraphInk ink);

// Paints a plot: grid, limits, curves, legend, marker lines and their captions. The screen, a picture and a printer all
// go through this class; only surface and ink differ. Where the surface is made of pixels, the live curve and those
// that move with it are set in them by PlotImage, as on the screen.
class PlotPainter
{
public:
    // All in the painter's units. size: extent of the plot, its upper left corner at the origin; pixel: grain on which
    // lines are set, so that they are sharp; thickness: of a line, a whole number of grains.
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

    // Everything but the cursor; captions in the painter's font.
    void paint(QPainter &painter) const;

    // --- the parts, for a screen that keeps some of them ---

    // Grid, limits and the curves that stay.
    void paintBackground(QPainter &painter) const;
    // The live curve and those that move with it, for PlotImage. Where the painter's units are pixels.
    std::vector<PlotImage::Curve> curvesInPixels() const;

    // In the upper right corner; empty without entries.
    QRectF legendRect(const QFont &font) const;
    void paintLegend(QPainter &painter) const;

    // Amplitudes of the rows 1, 2, ... One point for each, also where it lies outside the surface.
    QPolygonF placedCurve(std::span<const double> amplitudes) const;
    // A curve or a limit at its own frequencies; one polygon for each piece between gaps.
    QList<QPolygonF> placedTrace(const PlotTrace &trace) const;
    QPolygonF placedLimit(const LimitLine &limit) const;
    // What of a placed curve lies inside the surface: more than one line where it leaves and comes back.
    QList<QPolygonF> runsOf(const QPolygonF &placed) const;

    // The line of a marker or of the cursor.
    GraphLine line(GraphItem item) const;
    // Nothing when the line is hidden.
    void paintLine(QPainter &painter, const GraphLine &line) const;

    // "M1" to "M4"; the lines of the cursor have none.
    static QString captionOf(GraphItem item);

    // Lays a caption out in a font, and gives it its place beside its line.
    static void measureCaption(GraphLabel &caption, const QFont &font);
    void placeCaption(GraphItem item, const GraphLine &line, GraphLabel &caption) const;
    // At its place, or moved inside where that is cut off; above the plot for M1 and M2. Empty when its line is hidden
    // or outside the range.
    QRectF captionRect(GraphItem item, const GraphLine &line, const GraphLabel &caption) const;
    void paintCaption(QPainter &painter, GraphItem item, const GraphLine &line, const GraphLabel &caption) const;

    // The places of the captions of M1 and M2. Where they would overlap, the one of the left line goes to its left.
    std::pair<QRectF, QRectF> placesAbove(const GraphLabel &m1, const GraphLabel &m2) const;

    // A caption at this place, with or without a shade behind it.
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
