// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace calvorn {

// Half power in dB, a voltage ratio of 1 / sqrt 2. All "-3 dB" bandwidths in this library use this value.
inline constexpr double kHalfPowerDb = 3.0102999566398120;

// The reason why a result is missing.
enum class Missing {
    Nothing, // the result is present
    NoSweep,
    NoCrossing,          // the curve does not cross the level within the range
    BelowFloor,          // the signal there is too weak for the detector
    NoReference,         // the response is not relative
    NoParallelResonance, // no minimum above the series resonance within the range
    Gap,                 // a sample is missing there
    NotReached,          // the curve does not fall to the level
    NotBelowReference    // the level is not below the reference, so there is no loss or absorption
};

// Decibels over rising frequencies: the data from which all results are computed.
struct Response
{
    std::vector<double> frequencies; // Hz, rising
    std::vector<double> decibels;    // NaN: a gap; -infinity: at or below the floor
    bool isRelative = false;         // relative to a reference; otherwise to a fixed voltage

    bool isEmpty() const { return frequencies.empty(); }
};

// referenceVolts: the voltage that corresponds to 0 dB, 1 V or 10 V.
Response responseIn(const Trace &trace, double referenceVolts);
// The result has gaps outside the reference's range, and where the reference is at or below its floor.
Response relativeResponse(const Trace &trace, const Trace &reference);

// A run of adjacent samples with equal values, by index.
struct Plateau
{
    std::size_t first = 0;
    std::size_t last = 0;

    std::size_t size() const { return last - first + 1; }
    std::size_t middle() const { return first + (last - first) / 2; }
};

// Return the longest run of adjacent samples with the highest or lowest value; if several are equally long, the one at
// the lowest frequency. Gaps are skipped. Return nullopt if there are no values.
// frequencies: Hz, rising or falling, one for each value.
std::optional<Plateau> highestPlateau(std::span<const double> frequencies, std::span<const double> values);
std::optional<Plateau> lowestPlateau(std::span<const double> frequencies, std::span<const double> values);

// Returns the plateau's centre frequency in Hz. It may lie between two samples.
double middleOf(std::span<const double> frequencies, const Plateau &plateau);

// A frequency, or the reason why it is missing.
struct Crossing
{
    std::optional<double> frequency; // Hz
    Missing missing = Missing::Nothing;
};

// Search from sample `from` towards higher (direction 1) or lower indices (-1) for the first point at which the curve
// falls or rises to the level, and interpolate linearly in dB. `missing` is NoCrossing, BelowFloor (a sample next to
// the crossing is below the floor) or Gap (the curve has a gap before the crossing).
Crossing fallingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                         int direction, double level);
Crossing risingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                        int direction, double level);

struct Crossings
{
    Crossing lower; // on the low-frequency side
    Crossing upper;
};

// Returns the points on both sides of the peak at which the curve has fallen by belowPeakDb (greater than 0). Pass
// kHalfPowerDb for the -3 dB points. `missing` can also be NoSweep.
Crossings crossings(const Response &response, double belowPeakDb);
// Does the same for a given peak, which must be above the floor.
Crossings crossingsBelow(const Response &response, const Plateau &peak, double belowPeakDb);

// Returns the index of the next local maximum after sample `from` towards higher (direction 1) or lower frequencies
// (-1), or nullopt. A maximum counts if, on each side, it is at least prominenceDb (0 or more) above the lowest point
// before the next higher sample, gap or end of the curve. The first and the last sample never count. For a plateau,
// returns its middle sample.
std::optional<std::size_t> nextPeak(const Response &response, std::size_t from, int direction, double prominenceDb);

} // namespace calvorn
