// SPDX-License-Identifier: MIT
#pragma once

#include "display/graph_coordinates.h"
#include "display/graph_line.h"

#include <QColor>
#include <QFont>
#include <QPolygonF>
#include <QRect>

#include <optional>
#include <span>

class QPainter;

namespace calvorn {

// Light lines on black, as on the screen, or dark ones on white paper.
enum class GraphInk { Screen, Paper };

// The colour that stands for one of the screen's.
QColor inked(QRgb screenColour, GraphInk ink);

// Paints the plot: grid, curve, marker lines and their captions. The screen, a picture and a printer all go through
// this class; only surface and ink differ, and the curve on the screen is PlotImage's.
class GraphPainter
{
public:
    // All in the painter's units. surface: extent of the plot, its upper left corner at the origin; pixel: grain on
    // which lines are set, so that they are sharp; thickness: of a line, a whole number of grains.
    struct Surface
    {
        QSizeF size;
        double pixel = 1.0;
        double thickness = 1.0;
        double curveWidth = 0.0; // of paintCurve(); 0: the thinnest line that the device has
    };

    GraphPainter(const GraphCoordinates &coordinates, const Surface &surface, GraphInk ink = GraphInk::Screen);

    void paintGrid(QPainter &painter) const;

    // values: y in user units of the rows 1, 2, ... One point for each, also where it lies outside the surface.
    QPolygonF placedCurve(std::span<const double> values) const;
    // What of a placed curve lies inside the surface: more than one line where it leaves and comes back.
    QList<QPolygonF> runsOf(const QPolygonF &placed) const;
    void paintCurve(QPainter &painter, const QPolygonF &placed) const;

    // Nothing when the line is hidden.
    void paintLine(QPainter &painter, const GraphLine &line) const;

    // Lays a caption out in a font, and gives it its place beside its line.
    static void measureCaption(GraphLabel &caption, const QFont &font);
    void placeCaption(GraphItem item, const GraphLine &line, GraphLabel &caption) const;
    // At its place, or moved inside where that is cut off; above the plot for M1 and M2. Empty when its line is hidden
    // or outside the range.
    QRectF captionRect(GraphItem item, const GraphLine &line, const GraphLabel &caption) const;
    void paintCaption(QPainter &painter, GraphItem item, const GraphLine &line, const GraphLabel &caption) const;

    // Two captions above the plot that would overlap: the one of the left line goes to its left.
    void separate(QRectF &first, const GraphLine &firstLine, QRectF &second, const GraphLine &secondLine) const;

    // A caption at this place, with or without a shade behind it.
    void paintCaption(QPainter &painter, const QRectF &place, const GraphLine &line, const GraphLabel &caption,
                      bool shaded) const;

private:
    double snapped(double value) const;
    bool isOnSurface(double position, double extent) const;
    std::optional<QRectF> stripeAt(QPointF user, bool upright) const;

    const GraphCoordinates &m_coordinates;
    Surface m_surface;
    GraphInk m_ink;
};

} // namespace calvorn
