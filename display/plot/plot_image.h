// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPointF>
#include <QRegion>

#include <span>
#include <vector>

namespace calvorn {

// The plot as the screen shows it, in device pixels: a grid, and a curve over it with soft edges.
//
// A new curve takes the place of the one before without painting the rest again: each column of pixels remembers from
// where to where the curve covers it. So a sweep costs what has moved, on a large window as on a small one.
class PlotImage
{
public:
    // Null until there is a grid.
    bool isNull() const { return m_image.isNull(); }
    void clear() { m_image = QImage(); }

    // thickness: of the curve, pixels, at least 1. The curve is gone. The grid is taken as Format_RGB32.
    void setGrid(const QImage &grid, double thickness, QRgb curveColour);

    // Pixels, with (0, 0) in the middle of the upper left one; x rises from point to point, y may lie outside. No
    // points: no curve. Returns what looks different now, as rectangles that stand side by side.
    QRegion setCurve(std::span<const QPointF> points);

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

    void placeStrips(std::span<const QPointF> points);
    Strip stripOf(double highest, double lowest) const;
    QRegion changedArea();
    void takeCurveAway();
    void paintCurve();
    qsizetype pixelsOfARow() const;

    QImage m_image;
    double m_thickness = 1.0;
    QRgb m_colour = 0;
    std::vector<Strip> m_strips; // of the curve that is shown, one for each column
    std::vector<Strip> m_placed; // of the next one
    std::vector<Band> m_bands;
    std::vector<QRgb> m_underTheCurve; // the grid's pixels in the strips, column after column
};

} // namespace calvorn
