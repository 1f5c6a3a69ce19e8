// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QPointF>
#include <QRgb>
#include <QSizeF>

#include <vector>

namespace calvorn {

inline constexpr QRgb kGraphBackground = 0xFF000000; // (0, 0, 0)
inline constexpr QRgb kMinorGridColour = 0xFF006400; // (0, 100, 0)
inline constexpr QRgb kMajorGridColour = 0xFF00C800; // (0, 200, 0)
inline constexpr QRgb kCentreColour = 0xFFE60000;    // (230, 0, 0): centre frequency and zero amplitude
inline constexpr QRgb kCurveColour = 0xFFFFFF00;     // (255, 255, 0)

// One line of the grid, in user units.
struct GridLine
{
    double x1;
    double y1;
    double x2;
    double y2;
    QRgb colour;

    bool operator==(const GridLine &) const = default;
};

// The user coordinates of the graph for one scale and full-scale value, and their way to pixels.
//
// x is the table row, 0 to 400. y is the amplitude x 1000: volts upwards on the linear scale, -dB (so downwards) on
// the logarithmic ones. Every value of the record gives usable coordinates: a top that is not a positive number
// counts as 1 V, a range that spans less than 1 dB as one of 1 dB, an unknown scale as scale 1.
class GraphCoordinates
{
public:
    static constexpr double kWidth = kSweepPoints;

    GraphCoordinates() = default;
    explicit GraphCoordinates(const Configuration &configuration);

    double top() const { return m_top; }       // y of the upper edge
    double height() const { return m_height; } // negative on the linear scale, where y grows upwards
    double bottom() const { return m_top + m_height; }
    double fullScaleVolt() const { return m_fullScaleVolt; } // what the linear scale is drawn for, V

    // y of an amplitude in volts or dB, and back.
    double factor() const { return m_linear ? 1000.0 : -1000.0; }
    double yOfAmplitude(double amplitude) const { return amplitude * factor(); }
    double amplitudeOfY(double y) const { return y / factor(); }

    // The height of 10 dB, or of a quarter of the linear scale, in the unit of outerHeight.
    double labelPitch(double outerHeight) const;

    // User units 0 and 400, top and bottom, lie in the middle of the outermost pixels, so that the frame of the grid
    // is seen. surface: logical pixels; pixel: the size of a device pixel in them.
    QPointF toPixel(QPointF user, QSizeF surface, double pixel = 1.0) const;
    QPointF toUser(QPointF position, QSizeF surface, double pixel = 1.0) const;

    // The lines in the order of painting: later ones lie on top.
    std::vector<GridLine> gridLines() const;

    bool operator==(const GraphCoordinates &) const = default;

private:
    void addVerticalLines(std::vector<GridLine> &lines) const;
    void addLadder(std::vector<GridLine> &lines, double from, double to, double step, QRgb colour) const;

    bool m_linear = true;
    double m_top = 998.0;
    double m_height = -1000.0;
    double m_fullScaleVolt = 1.0;
};

} // namespace calvorn
