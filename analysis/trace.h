// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace calvorn {

// A sweep that can be kept, compared and computed with: volts at equal distances.
struct Trace
{
    QString name;
    double start = 0.0;        // Hz, of the first sample
    double step = 0.0;         // Hz, from sample to sample; negative where the sweep falls
    std::vector<double> volts; // at full resolution; not a number where there is a gap
    double floor = 0.0;        // volts; at or below it the detector has seen nothing

    bool isEmpty() const { return volts.empty(); }
    double frequencyAt(std::size_t index) const { return start + static_cast<double>(index) * step; }
    // Whether both have the same start, step and number of samples.
    bool hasAxisOf(const Trace &other) const;

    // Linear between neighbouring samples; nothing outside the range and nothing next to a gap.
    std::optional<double> voltsAt(double hertz) const;
};

// Whether every row lies within 1 Hz + 1 % of the step of where equal distances between the first and the last row put
// it. False where a frequency is no number. traceOf() is meant for such sweeps.
bool isEquallySpaced(const Sweep &sweep);

// Volts; at or below, the detector has seen nothing. Half a count where the sweep has a detector; otherwise half a
// millivolt on the linear scale and kFloorDb on the others.
double floorOf(const Sweep &sweep, std::int16_t scale);

// The samples of a sweep, with the axis from its first to its last row and no name. Empty where there is no sweep yet,
// or where the first or last frequency is no number.
//
// Volts come from the counts where the sweep has a detector. Otherwise they come from the amplitudes, which are in the
// units of the scale (core/scale_type.h). A cell that is no number becomes a gap.
Trace traceOf(const Sweep &sweep, std::int16_t scale);

// A trace divided by another one.
struct RelativeTrace
{
    double start = 0.0;         // Hz, of the first sample
    double step = 0.0;          // Hz
    std::vector<double> ratios; // 1 where both are equal; not a number where there is a gap
    // Why there are gaps, besides those of the two traces.
    bool isOutsideReference = false;    // some samples lie outside the range of the reference
    bool isReferenceBelowFloor = false; // at some samples the reference is at or below its floor

    double frequencyAt(std::size_t index) const { return start + static_cast<double>(index) * step; }
};

// Sample for sample; the reference is interpolated linearly in volts. A ratio is 0 or negative where the volts are.
RelativeTrace relativeTo(const Trace &trace, const Trace &reference);

} // namespace calvorn
