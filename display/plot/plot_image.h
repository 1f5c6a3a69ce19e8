// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPolygonF>
#include <QRegion>

#include <limits>
#include <span>
#include <vector>

namespace calvorn {

// The plot as shown on the screen, in device pixels: a grid with antialiased curves over it.
//
// A new curve replaces the previous one without repainting the rest: each pixel column stores which rows the curve
// covers. The cost of a sweep therefore depends on how much the curve moves, not on the size of the window.
class PlotImage
{
public:
    // True until setGrid() is called.
    bool isNull() const { return m_image.isNull(); }
    void clear() { m_image = QImage(); }

    struct Curve
    {
        // In pixels, with (0, 0) at the centre of the upper left pixel. x increases from point to point; y may be
        // outside the image. A y of NaN creates a gap.
        QPolygonF points;
        QRgb colour = 0;
    };

    // Sets a new grid, converted to Format_RGB32, and removes all curves. thickness: curve width in pixels, at least 1.
    void setGrid(const QImage &grid, double thickness);

    // Draws the curves in the given order, the last one on top. Returns the changed area as non-overlapping rectangles.
    QRegion setCurves(std::span<const Curve> curves);

    const QImage &image() const { return m_image; }

private:
    // The rows of a column that the curve covers; the first and the last row may be only partly covered.
    struct Strip
    {
        int first = 0;
        int end = 0;        // one past the last row
        int firstCover = 0; // 0 to kFullCover
        int lastCover = 0;

        bool isEmpty() const { return first >= end; }
        bool operator==(const Strip &) const = default;
    };

    // The vertical extent of a curve in a pixel column; highest > lowest if the curve does not reach the column.
    struct Reach
    {
        double highest = std::numeric_limits<double>::infinity();
        double lowest = -std::numeric_limits<double>::infinity();
    };

    struct Run
    {
        int left = 0;
        int end = 0; // one past the last column
    };
    // The rows from top up to, but not including, bottom, and the columns that changed in at least one of these rows.
    struct Band
    {
        int top = 0;
        int bottom = 0;
        std::vector<Run> runs; // from left to right

        void clear();
        void add(int column, int first, int end);
    };

    // A curve as it is currently shown (strips, colour) and as it will be shown next (placed, nextColour).
    struct Layer
    {
        QPolygonF points;
        std::vector<Strip> strips; // one for each column
        std::vector<QRgb> under;   // the pixels below the strips, column by column
        QRgb colour = 0;
        std::vector<Strip> placed;
        QRgb nextColour = 0;
        bool hasMoved = false; // or will change its colour

        bool isSameAt(std::size_t column) const;
    };

    void place(const Curve &curve, Layer &layer);
    void placeStrips(std::span<const QPointF> points, std::vector<Strip> &placed);
    Strip stripOf(double highest, double lowest) const;
    QRegion changedArea();
    void addChange(int column, const Layer &layer);
    void addChange(int column, int first, int end);
    void takeAway(const Layer &layer);
    void paint(Layer &layer);
    qsizetype pixelsOfARow() const;

    QImage m_image;
    double m_thickness = 1.0;
    std::vector<Layer> m_layers;
    // Members only so that their memory can be reused.
    std::vector<Band> m_bands;
    std::vector<const Layer *> m_moving;
    std::vector<Reach> m_reaches;
};

} // namespace calvorn
