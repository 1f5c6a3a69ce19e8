// SPDX-License-Identifier: MIT
#include "analysis/sweep_response.h"

#include "analysis/response.h"
#include "core/common_functions.h"
#include "core/scale_type.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calvorn {

namespace {

std::vector<ResponseSample> samplesOfAmplitudes(const SweepTable &table)
{
    std::vector<ResponseSample> samples;
    for (int row = 1; row <= kSweepPoints; ++row)
        samples.push_back(
            {table.number(row, SweepTable::FrequencyColumn), table.number(row, SweepTable::AmplitudeColumn)});
    return samples;
}

// Returns the samples in volts. Throws if a count is not a number.
std::vector<ResponseSample> samplesOfCounts(const SweepTable &table, const Sweep &sweep)
{
    std::vector<ResponseSample> samples;
    for (int row = 1; row <= kSweepPoints; ++row) {
        table.number(row, SweepTable::SampleColumn);
        samples.push_back({table.number(row, SweepTable::FrequencyColumn), sweep.volts(row)});
    }
    return samples;
}

double decibelsOf(double volts, std::int16_t scale)
{
    if (volts <= 0.0)
        return kFloorDb;
    return std::max(kFloorDb, 20.0 * std::log10(volts / voltsOfZeroDb(scale)));
}

// floor: the level in volts or dB at or below which no signal can be detected.
SweepResponse responseAbove(double floor, const std::vector<ResponseSample> &samples, AmplitudeUnit unit)
{
    std::vector<double> frequencies;
    std::vector<double> amplitudes;
    std::vector<double> decibels;
    for (const ResponseSample &sample : samples) {
        frequencies.push_back(sample.frequency);
        amplitudes.push_back(sample.amplitude);
        if (sample.amplitude <= floor)
            decibels.push_back(-std::numeric_limits<double>::infinity());
        else
            decibels.push_back(unit == AmplitudeUnit::Volt ? 20.0 * std::log10(sample.amplitude) : sample.amplitude);
    }
    const std::optional<Plateau> peak = highestPlateau(frequencies, amplitudes);
    if (!peak)
        return {};
    SweepResponse response{amplitudes[peak->first], middleOf(frequencies, *peak), {}, {}};
    if (response.peak <= floor)
        return response;
    const double level = decibels[peak->first] - kHalfPowerDb;
    response.lower = fallingCrossing(frequencies, decibels, peak->first, -1, level).frequency;
    response.upper = fallingCrossing(frequencies, decibels, peak->last, 1, level).frequency;
    if (frequencies.front() > frequencies.back())
        std::swap(response.lower, response.upper);
    return response;
}

} // namespace

std::optional<double> SweepResponse::bandwidth() const
{
    return lower && upper ? std::optional(*upper - *lower) : std::nullopt;
}

SweepResponse responseOf(const std::vector<ResponseSample> &samples, AmplitudeUnit unit)
{
    return responseAbove(unit == AmplitudeUnit::Volt ? 0.0 : kFloorDb, samples, unit);
}

SweepResponse responseOf(const SweepTable &table, const Configuration &configuration)
{
    const bool linear = isLinearScale(configuration.scaleType);
    const Sweep &sweep = table.sweep();
    if (!sweep.detector)
        return responseOf(samplesOfAmplitudes(table), linear ? AmplitudeUnit::Volt : AmplitudeUnit::Decibel);
    SweepResponse response =
        responseAbove(floorOf(sweep, configuration.scaleType), samplesOfCounts(table, sweep), AmplitudeUnit::Volt);
    if (!linear)
        response.peak = decibelsOf(response.peak, configuration.scaleType);
    return response;
}

} // namespace calvorn
