// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPolygonF>
#include <QRegion>

#include <limits>
#include <span>
#include <vector>

namespace calvorn {

// The plot as the screen shows it, in device pixels: a grid, and curves over it with soft edges.
//
// A new curve takes the place of the one before without painting the rest again: each column of pixels remembers from
// where to where the curve covers it. So a sweep costs what has moved, on a large window as on a small one.
class PlotImage
{
public:
    // Null until there is a grid.
    bool isNull() const { return m_image.isNull(); }
    void clear() { m_image = QImage(); }

    struct Curve
    {
        // Pixels, with (0, 0) in the middle of the upper left one; x rises from point to point, y may lie outside. A y
        // that is not a number makes a gap.
        QPolygonF points;
        QRgb colour = 0;
    };

    // thickness: of the curves, pixels, at least 1. The curves are gone. The grid is taken as Format_RGB32.
    void setGrid(const QImage &grid, double thickness);

    // The curves from the lowest to the one on top. Returns what looks different now, as rectangles that stand side by
    // side.
    QRegion setCurves(std::span<const Curve> curves);

    const QImage &image() const { return m_image; }

private:
    // What the curve covers of a column: these rows, of the first and the last of them only a part.
    struct Strip
    {
        int first = 0;
        int end = 0;        // behind the last one
        int firstCover = 0; // of kFullCover
        int lastCover = 0;

        bool isEmpty() const { return first >= end; }
        bool operator==(const Strip &) const = default;
    };

    // How far a curve goes in a column of pixels; highest above lowest while it does not come there.
    struct Reach
    {
        double highest = std::numeric_limits<double>::infinity();
        double lowest = -std::numeric_limits<double>::infinity();
    };

    struct Run
    {
        int left = 0;
        int end = 0; // right of the last column
    };
    // Rows from top to above bottom, with the columns that have changed in one of them.
    struct Band
    {
        int top = 0;
        int bottom = 0;
        std::vector<Run> runs; // from left to right

        void clear();
        void add(int column, int first, int end);
    };

    // A curve as it is shown, and as the next one will be.
    struct Layer
    {
        QPolygonF points;
        std::vector<Strip> strips; // one for each column
        std::vector<QRgb> under;   // the pixels below the strips, column after column
        QRgb colour = 0;
        std::vector<Strip> placed;
        QRgb nextColour = 0;
        bool hasMoved = false; // or is of another colour

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
    // Kept for their memory.
    std::vector<Band> m_bands;
    std::vector<const Layer *> m_moving;
    std::vector<Reach> m_reaches;
};

} // namespace calvorn
