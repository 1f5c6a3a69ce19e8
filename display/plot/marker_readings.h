// SPDX-License-Identifier: MIT
#pragma once

#include "core/settings.h"
#include "data/sweep_table.h"
#include "display/plot/markers.h"

#include <QString>

namespace calvorn {

// Volts or dB: beyond it a marker means nothing, and a power of ten of it might not be a number any more.
inline constexpr double kLargestAmplitude = 1e6;

// The read-outs of the markers as they are shown: frequencies in Hz, amplitudes in the units of the scale.
struct MarkerTexts
{
    QString m1x, m1y, m2x, m2y, m2m1;
    QString m3y, m4y, m4m3;
};

// The first row whose frequency is not below this one (Hz), at most row 400.
// RuntimeError when a frequency on the way cannot be read.
int rowOfFrequency(const SweepTable &table, std::int32_t frequency);

// The row of a typed frequency; nothing where the text is no whole number of Hz.
std::optional<int> rowOfEntry(const SweepTable &table, const QString &text);

// The amplitude of a typed text, volts or dB, bounded; nothing where it is no number.
std::optional<double> amplitudeOfEntry(const QString &text);

// An amplitude as a marker shows it.
QString markerText(bool linear, double amplitude);

// |M2 - M1| in Hz as it is shown. RuntimeError(Overflow) when it does not fit.
QString frequencyDifference(const SweepTable &table, const MarkerSet &markers);

// M4 - M3 as it is shown: on the linear scale the distance; on a logarithmic one the signed difference when both lie
// on the same side of 0 dB, otherwise the sum of the magnitudes.
double markerDifference(bool linear, double m3, double m4);

// M3, M4 and their difference for these amplitudes, as shown.
struct AmplitudeTexts
{
    QString m3y, m4y, m4m3;
};
AmplitudeTexts amplitudeTexts(bool linear, double m3, double m4);

// The amplitude of M3 or M4 at the precision of its box: 0.0 is on neither side of zero, whatever it stands at.
double shownAmplitude(bool linear, double amplitude);

// All of them, for a picture. RuntimeError when the table's frequencies cannot be read.
MarkerTexts markerTexts(const SweepTable &table, const MarkerSet &markers, bool linear);

// The markers of the settings. What cannot be read stands at row 1 or at zero.
MarkerSet markersOf(const WindowSettings &settings, const SweepTable &table);

} // namespace calvorn
