// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace calvorn {

// Half the power in dB: 1 / sqrt 2 of the voltage, the "-3 dB" of every bandwidth here.
inline constexpr double kHalfPowerDb = 3.0102999566398120;

// Why a result cannot be had.
enum class Missing {
    Nothing, // it is there
    NoSweep,
    NoCrossing,          // the curve does not cross the level inside the range
    BelowFloor,          // the detector sees nothing there
    NoReference,         // the response is not relative
    NoParallelResonance, // no minimum above the series resonance inside the range
    Gap,                 // samples are missing there
    NotReached,          // the curve never gets as low as the level
    NotBelowReference    // the level is not below the reference, so nothing is lost or absorbed
};

// What results are computed from: a curve in decibels over rising frequencies.
struct Response
{
    std::vector<double> frequencies; // Hz, rising
    std::vector<double> decibels;    // not a number: a gap; -infinity: at or below the floor
    bool isRelative = false;         // to a reference; otherwise to a fixed voltage

    bool isEmpty() const { return frequencies.empty(); }
};

// referenceVolts: what 0 dB is, 1 V or 10 V.
Response responseIn(const Trace &trace, double referenceVolts);
// Gaps where the trace lies outside the reference or the reference is below its floor.
Response relativeResponse(const Trace &trace, const Trace &reference);

// Neighbouring samples of the same value, by their indices.
struct Plateau
{
    std::size_t first = 0;
    std::size_t last = 0;

    std::size_t size() const { return last - first + 1; }
    std::size_t middle() const { return first + (last - first) / 2; }
};

// The run of neighbouring samples that all have the highest or lowest value: of several the longest, and of equally
// long ones that of the lowest frequency. Gaps are passed over. Nothing where there are no values.
// frequencies: Hz, may rise or fall; as many as values.
std::optional<Plateau> highestPlateau(std::span<const double> frequencies, std::span<const double> values);
std::optional<Plateau> lowestPlateau(std::span<const double> frequencies, std::span<const double> values);

// Hz; the middle of the plateau, which may lie between two samples.
double middleOf(std::span<const double> frequencies, const Plateau &plateau);

// A frequency, or why there is none.
struct Crossing
{
    std::optional<double> frequency; // Hz
    Missing missing = Missing::Nothing;
};

// From sample `from` towards higher (direction 1) or lower indices (-1), the first place where the curve has fallen to
// the level or risen to it; interpolated linearly in dB.
// Missing: NoCrossing, BelowFloor (a neighbour of the crossing is below the floor), Gap (one comes before the
// crossing).
Crossing fallingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                         int direction, double level);
Crossing risingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                        int direction, double level);

struct Crossings
{
    Crossing lower; // towards lower frequencies
    Crossing upper;
};

// To either side of the peak, where the curve is that many dB (above 0) below it.
// For the -3 dB points: kHalfPowerDb. Missing also: NoSweep.
Crossings crossings(const Response &response, double belowPeakDb);
// The same from a plateau that is above the floor.
Crossings crossingsBelow(const Response &response, const Plateau &peak, double belowPeakDb);

// The next local maximum from sample `from` on towards higher (direction 1) or lower frequencies (-1), which rises at
// least that many dB (0 or more) above the lowest points that part it from higher ground, a gap or the end of the range
// on both sides. The first and the last sample are none. Index of the sample; of a plateau the middle one. Nothing when
// there is none.
std::optional<std::size_t> nextPeak(const Response &response, std::size_t from, int direction, double prominenceDb);

} // namespace calvorn
