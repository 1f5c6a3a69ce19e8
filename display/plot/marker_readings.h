// SPDX-License-Identifier: MIT
#pragma once

#include "core/settings.h"
#include "data/sweep_table.h"
#include "display/plot/markers.h"

#include <QString>

namespace calvorn {

// Volts or dB. Larger marker amplitudes are meaningless; the bound keeps calculations with them finite.
inline constexpr double kLargestAmplitude = 1e6;

// The marker read-outs as displayed: frequencies in Hz, amplitudes in the scale's units.
struct MarkerTexts
{
    QString m1x, m1y, m2x, m2y, m2m1;
    QString m3y, m4y, m4m3;
};

// Returns the first row whose frequency is not below the given one (Hz), at most row 400. Throws RuntimeError if a
// frequency before that row cannot be read.
int rowOfFrequency(const SweepTable &table, std::int32_t frequency);

// Returns the row for a typed frequency in Hz, or nullopt if the text is not a 32-bit number.
std::optional<int> rowOfEntry(const SweepTable &table, const QString &text);

// Returns a typed amplitude in volts or dB, bounded by kLargestAmplitude, or nullopt if the text is not a number.
std::optional<double> amplitudeOfEntry(const QString &text);

// Formats an amplitude as shown for a marker.
QString markerText(bool linear, double amplitude);

// Returns the displayed |M2 - M1| in Hz. Throws RuntimeError(Overflow) if the difference does not fit into 32 bits.
QString frequencyDifference(const SweepTable &table, const MarkerSet &markers);

// Returns the displayed M4 - M3: on the linear scale, the absolute difference; on a logarithmic scale, the signed
// difference if both are on the same side of 0 dB, otherwise the sum of the magnitudes.
double markerDifference(bool linear, double m3, double m4);

// The texts of M3, M4 and their difference.
struct AmplitudeTexts
{
    QString m3y, m4y, m4m3;
};
AmplitudeTexts amplitudeTexts(bool linear, double m3, double m4);

// Rounds the amplitude of M3 or M4 to its box's precision, so that a marker showing 0.0 is on neither side of zero.
double shownAmplitude(bool linear, double amplitude);

// Returns all read-outs, for a picture. Throws RuntimeError if the table's frequencies cannot be read.
MarkerTexts markerTexts(const SweepTable &table, const MarkerSet &markers, bool linear);

// Returns the markers stored in the settings. An invalid frequency yields row 1, an invalid amplitude zero.
MarkerSet markersOf(const WindowSettings &settings, const SweepTable &table);

} // namespace calvorn
