// SPDX-License-Identifier: MIT
#include "analysis/trace.h"

#include "core/common_functions.h"
#include "core/scale_type.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kHalfMillivolt = 0.0005;
// The fraction of a step by which rounding may move a frequency away from its sample.
constexpr double kRounding = 1e-6;

double voltsOfDecibels(double decibels, std::int16_t scale)
{
    return std::pow(10.0, decibels / 20.0) * voltsOfZeroDb(scale);
}

double stepOf(const Sweep &sweep)
{
    return (sweep.frequencies.back() - sweep.frequencies.front()) / (kSweepPoints - 1);
}

// Returns the position of a frequency as a sample index, fractional between samples; nullopt outside the trace.
std::optional<double> positionOf(const Trace &trace, double hertz)
{
    if (trace.isEmpty())
        return std::nullopt;
    double position = hertz - trace.start;
    if (trace.step != 0.0)
        position /= trace.step;
    else if (position != 0.0)
        return std::nullopt;
    if (const double nearest = std::nearbyint(position); std::abs(position - nearest) < kRounding)
        position = nearest;
    if (!(position >= 0.0 && position <= static_cast<double>(trace.volts.size() - 1)))
        return std::nullopt;
    return position;
}

double interpolated(const Trace &trace, double position)
{
    const auto index = static_cast<std::size_t>(position);
    const double part = position - static_cast<double>(index);
    if (part == 0.0)
        return trace.volts[index];
    return trace.volts[index] + part * (trace.volts[index + 1] - trace.volts[index]);
}

} // namespace

bool Trace::hasAxisOf(const Trace &other) const
{
    return start == other.start && step == other.step && volts.size() == other.volts.size();
}

std::optional<double> Trace::voltsAt(double hertz) const
{
    const std::optional<double> position = positionOf(*this, hertz);
    if (!position)
        return std::nullopt;
    const double value = interpolated(*this, *position);
    return std::isnan(value) ? std::nullopt : std::optional(value);
}

double floorOf(const Sweep &sweep, std::int16_t scale)
{
    if (sweep.detector)
        return sweep.detector->floor();
    return isLinearScale(scale) ? kHalfMillivolt : voltsOfDecibels(kFloorDb, scale);
}

bool isEquallySpaced(const Sweep &sweep)
{
    const double start = sweep.frequencies.front();
    const double step = stepOf(sweep);
    const double tolerance = 1.0 + std::abs(step) / 100.0;
    for (std::size_t i = 0; i < sweep.frequencies.size(); ++i) {
        const double expected = start + static_cast<double>(i) * step;
        if (!(std::abs(sweep.frequencies[i] - expected) <= tolerance)) // also true for NaN
            return false;
    }
    return true;
}

Trace traceOf(const Sweep &sweep, std::int16_t scale)
{
    Trace trace;
    if (sweep.origin == SweepOrigin::None || !Sweep::isNumber(sweep.frequencies.front()) ||
        !Sweep::isNumber(sweep.frequencies.back()))
        return trace;
    trace.start = sweep.frequencies.front();
    trace.step = stepOf(sweep);
    trace.floor = floorOf(sweep, scale);
    trace.volts.reserve(kSweepPoints);
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double amplitude = sweep.amplitudes[static_cast<std::size_t>(row - 1)];
        if (sweep.detector)
            trace.volts.push_back(sweep.volts(row));
        else
            trace.volts.push_back(isLinearScale(scale) ? amplitude : voltsOfDecibels(amplitude, scale));
    }
    return trace;
}

RelativeTrace relativeTo(const Trace &trace, const Trace &reference)
{
    RelativeTrace relative{trace.start, trace.step, {}, false, false};
    relative.ratios.reserve(trace.volts.size());
    for (std::size_t i = 0; i < trace.volts.size(); ++i) {
        double ratio = Sweep::kNoNumber;
        if (const std::optional<double> position = positionOf(reference, trace.frequencyAt(i)); !position) {
            relative.isOutsideReference = true;
        } else if (const double volts = interpolated(reference, *position); volts <= reference.floor) {
            relative.isReferenceBelowFloor = true;
        } else {
            ratio = trace.volts[i] / volts;
        }
        relative.ratios.push_back(ratio);
    }
    return relative;
}

} // namespace calvorn
