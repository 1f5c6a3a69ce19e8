// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/markers.h"

#include <QRgb>
#include <QSizeF>
#include <QStaticText>
#include <QString>

namespace calvorn {

inline constexpr QRgb kFrequencyMarkerColour = 0xFF4FC3F7; // light blue: M1, M2
inline constexpr QRgb kAmplitudeMarkerColour = 0xFFFF9DE0; // pink: M3, M4
inline constexpr QRgb kCursorColour = 0xFFFFFFFF;

// A line over the curve, in user units of the graph (display/plot/graph_coordinates.h). M1, M2 and CursorV are vertical
// (x1 == x2), M3, M4 and CursorH horizontal (y1 == y2).
struct GraphLine
{
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    bool visible = true;
    QRgb colour = 0;
};

// The caption of a marker. left and top are in user units. The caption of a vertical line is to its right; the caption
// of a horizontal line is vertically centred on it.
struct GraphLabel
{
    double left = 0.0;
    double top = 0.0;
    QString text;
    QStaticText layout; // cached layout of the text, which is painted with every sweep
    QSizeF size;        // including the margin, logical pixels
};

} // namespace calvorn
