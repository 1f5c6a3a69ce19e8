// SPDX-License-Identifier: MIT
#pragma once

#include "core/settings.h"
#include "data/sweep_table.h"
#include "display/plot/markers.h"

#include <QString>

namespace calvorn {

// Volts or dB. Larger marker amplitudes make no sense; the bound keeps arithmetic with them finite.
inline constexpr double kLargestAmplitude = 1e6;

// The marker read-outs as shown: frequencies in Hz, amplitudes in the units of the scale.
struct MarkerTexts
{
    QString m1x, m1y, m2x, m2y, m2m1;
    QString m3y, m4y, m4m3;
};

// Returns the first row whose frequency is not below this one (Hz), at most row 400. Throws RuntimeError when a
// frequency before that row cannot be read.
int rowOfFrequency(const SweepTable &table, std::int32_t frequency);

// Returns the row of a typed frequency in Hz; nothing if the text is not a number in 32-bit range.
std::optional<int> rowOfEntry(const SweepTable &table, const QString &text);

// Returns the amplitude of a typed text in volts or dB, bounded by kLargestAmplitude; nothing if it is not a number.
std::optional<double> amplitudeOfEntry(const QString &text);

// Formats an amplitude as a marker shows it.
QString markerText(bool linear, double amplitude);

// Returns |M2 - M1| in Hz as shown. Throws RuntimeError(Overflow) if the difference does not fit into 32 bits.
QString frequencyDifference(const SweepTable &table, const MarkerSet &markers);

// Returns M4 - M3 as shown: on the linear scale the distance; on a logarithmic one the signed difference if both lie on
// the same side of 0 dB, otherwise the sum of the magnitudes.
double markerDifference(bool linear, double m3, double m4);

// The texts of M3, M4 and their difference.
struct AmplitudeTexts
{
    QString m3y, m4y, m4m3;
};
AmplitudeTexts amplitudeTexts(bool linear, double m3, double m4);

// Rounds the amplitude of M3 or M4 to the precision of its box: a marker that shows 0.0 lies on neither side of zero.
double shownAmplitude(bool linear, double amplitude);

// Returns all read-outs, for a picture. Throws RuntimeError when the table's frequencies cannot be read.
MarkerTexts markerTexts(const SweepTable &table, const MarkerSet &markers, bool linear);

// Returns the markers of the settings. An unreadable frequency gives row 1, an unreadable amplitude zero.
MarkerSet markersOf(const WindowSettings &settings, const SweepTable &table);

} // namespace calvorn
