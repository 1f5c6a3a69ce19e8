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

// The user coordinates of the graph for one scale and full-scale value, and their conversion to pixels.
//
// x is the table row, 0 to 400. y is the amplitude x 1000: volts upwards on the linear scale, -dB (so downwards) on the
// logarithmic ones. Every configuration yields usable coordinates: a full scale that is not a positive number is
// replaced by 1 V, a range of less than 1 dB by 1 dB, and an unknown scale by scale 1.
class GraphCoordinates
{
public:
    static constexpr double kWidth = kSweepPoints;

    GraphCoordinates() = default;
    explicit GraphCoordinates(const Configuration &configuration);

    double top() const { return m_top; }       // y of the upper edge
    double height() const { return m_height; } // negative on the linear scale, where y grows upwards
    double bottom() const { return m_top + m_height; }
    double fullScaleVolt() const { return m_fullScaleVolt; } // range of the linear scale, V

    // Convert an amplitude in volts or dB to y, and y back to an amplitude.
    double factor() const { return m_linear ? 1000.0 : -1000.0; }
    double yOfAmplitude(double amplitude) const { return amplitude * factor(); }
    double amplitudeOfY(double y) const { return y / factor(); }

    // The height of 10 dB, or of a quarter of the linear scale, in the same unit as outerHeight.
    double labelPitch(double outerHeight) const;

    // x = 0 and 400, top and bottom map to the centres of the outermost pixels, so that the grid's frame is visible.
    // surface: logical pixels; pixel: the size of a device pixel in logical pixels.
    QPointF toPixel(QPointF user, QSizeF surface, double pixel = 1.0) const;
    QPointF toUser(QPointF position, QSizeF surface, double pixel = 1.0) const;

    // The lines in painting order, with later lines on top.
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
