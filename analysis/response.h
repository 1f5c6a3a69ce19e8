// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace calvorn {

// Half power in dB: 1 / sqrt 2 of the voltage. Every "-3 dB" bandwidth in this library uses it.
inline constexpr double kHalfPowerDb = 3.0102999566398120;

// The reason for a missing result.
enum class Missing {
    Nothing, // the result is present
    NoSweep,
    NoCrossing,          // the curve does not cross the level inside the range
    BelowFloor,          // the detector cannot see a signal there
    NoReference,         // the response is not relative
    NoParallelResonance, // no minimum above the series resonance inside the range
    Gap,                 // a sample is missing there
    NotReached,          // the curve does not fall to the level
    NotBelowReference    // the level is not below the reference, so there is no loss or absorption
};

// A curve in decibels over rising frequencies, from which results are computed.
struct Response
{
    std::vector<double> frequencies; // Hz, rising
    std::vector<double> decibels;    // NaN: a gap; -infinity: at or below the floor
    bool isRelative = false;         // relative to a reference; otherwise to a fixed voltage

    bool isEmpty() const { return frequencies.empty(); }
};

// referenceVolts: the voltage of 0 dB, 1 V or 10 V.
Response responseIn(const Trace &trace, double referenceVolts);
// The result has gaps where the trace is outside the reference or the reference is at or below its floor.
Response relativeResponse(const Trace &trace, const Trace &reference);

// Adjacent samples of equal value, by index.
struct Plateau
{
    std::size_t first = 0;
    std::size_t last = 0;

    std::size_t size() const { return last - first + 1; }
    std::size_t middle() const { return first + (last - first) / 2; }
};

// Return the run of adjacent samples with the highest or lowest value. The longest run is preferred, then the one at
// the lowest frequency. Gaps are skipped; the result is nullopt if there are no values.
// frequencies: Hz, rising or falling, one for each value.
std::optional<Plateau> highestPlateau(std::span<const double> frequencies, std::span<const double> values);
std::optional<Plateau> lowestPlateau(std::span<const double> frequencies, std::span<const double> values);

// Returns the middle of the plateau in Hz, which may be between two samples.
double middleOf(std::span<const double> frequencies, const Plateau &plateau);

// A frequency, or the reason for its absence.
struct Crossing
{
    std::optional<double> frequency; // Hz
    Missing missing = Missing::Nothing;
};

// Search from sample `from` towards higher (direction 1) or lower indices (-1) for the first place where the curve
// has fallen or risen to the level; interpolate linearly in dB. Missing is NoCrossing, BelowFloor (a sample beside
// the crossing is below the floor) or Gap (there is a gap before the crossing).
Crossing fallingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                         int direction, double level);
Crossing risingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                        int direction, double level);

struct Crossings
{
    Crossing lower; // towards lower frequencies
    Crossing upper;
};

// Returns the crossings on both sides of the peak at which the curve is belowPeakDb (above 0) lower. Pass
// kHalfPowerDb for the -3 dB points. Missing can also be NoSweep.
Crossings crossings(const Response &response, double belowPeakDb);
// Starts from a given plateau, which must be above the floor.
Crossings crossingsBelow(const Response &response, const Plateau &peak, double belowPeakDb);

// Returns the index of the next local maximum after sample `from` towards higher (direction 1) or lower frequencies
// (-1), or nullopt. A maximum counts if it rises at least prominenceDb (0 or more) above the lowest point on each
// side between it and the next higher sample, gap or end of the range. The first and the last sample never count. For
// a plateau, returns the middle sample.
std::optional<std::size_t> nextPeak(const Response &response, std::size_t from, int direction, double prominenceDb);

} // namespace calvorn
