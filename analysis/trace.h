// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace calvorn {

// A sweep that can be stored and compared: volts at equally spaced frequencies.
struct Trace
{
    QString name;
    double start = 0.0;        // Hz, frequency of the first sample
    double step = 0.0;         // Hz between samples; negative for a descending sweep
    std::vector<double> volts; // at full resolution; NaN in a gap
    double floor = 0.0;        // volts at or below which no signal can be detected

    bool isEmpty() const { return volts.empty(); }
    double frequencyAt(std::size_t index) const { return start + static_cast<double>(index) * step; }
    // Returns whether both traces have the same start, step and number of samples.
    bool hasAxisOf(const Trace &other) const;

    // Interpolates linearly between adjacent samples; returns nullopt outside the range and next to a gap.
    std::optional<double> voltsAt(double hertz) const;
};

// Returns whether the rows are equally spaced between the first and the last, each to within 1 Hz plus 1 % of the step.
// Returns false if a frequency is not a number. traceOf() expects an equally spaced sweep.
bool isEquallySpaced(const Sweep &sweep);

// Returns the voltage at or below which no signal can be detected: DetectorCalibration::floor() if the sweep has a
// detector; otherwise half a millivolt on the linear scale and kFloorDb on the others.
double floorOf(const Sweep &sweep, std::int16_t scale);

// Converts a sweep to a trace without a name, with an axis from the first to the last row. The trace is empty if there
// is no sweep yet or if the first or last frequency is not a number.
//
// Volts are computed from the counts if the sweep has a detector, otherwise from the amplitudes, which are in the
// scale's units (core/scale_type.h). A cell without a number becomes a gap.
Trace traceOf(const Sweep &sweep, std::int16_t scale);

// A trace divided by a reference.
struct RelativeTrace
{
    double start = 0.0;         // Hz, frequency of the first sample
    double step = 0.0;          // Hz
    std::vector<double> ratios; // 1 where both traces are equal; NaN in a gap
    // The causes of gaps that are not present in either trace.
    bool isOutsideReference = false;    // some samples are outside the reference's range
    bool isReferenceBelowFloor = false; // the reference is at or below its floor at some samples

    double frequencyAt(std::size_t index) const { return start + static_cast<double>(index) * step; }
};

// Divides each sample by the reference, interpolated linearly in volts. A ratio is zero or negative if its sample is.
RelativeTrace relativeTo(const Trace &trace, const Trace &reference);

} // namespace calvorn
