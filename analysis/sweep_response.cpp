// SPDX-License-Identifier: MIT
#include "analysis/sweep_response.h"

#include "core/common_functions.h"
#include "core/scale_type.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace calvorn {

namespace {

// Neighbouring samples of the same amplitude, by their indices.
struct Plateau
{
    std::size_t first = 0;
    std::size_t last = 0;

    std::size_t size() const { return last - first + 1; }
};

double middleOf(const std::vector<ResponseSample> &samples, const Plateau &plateau)
{
    return (samples[plateau.first].frequency + samples[plateau.last].frequency) / 2.0;
}

Plateau highestPlateau(const std::vector<ResponseSample> &samples)
{
    const double highest = std::ranges::max(samples, {}, &ResponseSample::amplitude).amplitude;
    std::optional<Plateau> best;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (samples[i].amplitude != highest)
            continue;
        Plateau plateau{i, i};
        while (i + 1 < samples.size() && samples[i + 1].amplitude == highest)
            plateau.last = ++i;
        if (!best || plateau.size() > best->size() ||
            (plateau.size() == best->size() && middleOf(samples, plateau) < middleOf(samples, *best)))
            best = plateau;
    }
    return best.value_or(Plateau{});
}

// From a sample outwards, the first place where the curve has fallen to the level.
std::optional<double> crossing(const std::vector<ResponseSample> &samples, std::size_t from, int direction,
                               double level)
{
    const auto last = static_cast<std::ptrdiff_t>(samples.size()) - 1;
    for (auto i = static_cast<std::ptrdiff_t>(from); i + direction >= 0 && i + direction <= last; i += direction) {
        const ResponseSample &inner = samples[static_cast<std::size_t>(i)];
        const ResponseSample &outer = samples[static_cast<std::size_t>(i + direction)];
        if (outer.amplitude > level)
            continue;
        const double part = (inner.amplitude - level) / (inner.amplitude - outer.amplitude);
        return inner.frequency + part * (outer.frequency - inner.frequency);
    }
    return std::nullopt;
}

std::vector<ResponseSample> samplesOfAmplitudes(const SweepTable &table)
{
    std::vector<ResponseSample> samples;
    for (int row = 1; row <= kSweepPoints; ++row)
        samples.push_back(
            {table.number(row, SweepTable::FrequencyColumn), table.number(row, SweepTable::AmplitudeColumn)});
    return samples;
}

// In volts.
std::vector<ResponseSample> samplesOfCounts(const SweepTable &table, const Sweep &sweep)
{
    std::vector<ResponseSample> samples;
    for (int row = 1; row <= kSweepPoints; ++row) {
        table.number(row, SweepTable::SampleColumn); // must be one
        samples.push_back({table.number(row, SweepTable::FrequencyColumn), sweep.volts(row)});
    }
    return samples;
}

double decibelsOf(double volts, std::int16_t scale)
{
    if (volts <= 0.0)
        return kFloorDb;
    return std::max(kFloorDb, 20.0 * std::log10(volts / (scaleRefersTo10V(scale) ? 10.0 : 1.0)));
}

} // namespace

std::optional<double> SweepResponse::bandwidth() const
{
    return lower && upper ? std::optional(*upper - *lower) : std::nullopt;
}

SweepResponse responseOf(const std::vector<ResponseSample> &samples, AmplitudeUnit unit)
{
    if (samples.empty())
        return {};
    const bool volts = unit == AmplitudeUnit::Volt;
    const Plateau plateau = highestPlateau(samples);
    SweepResponse response{samples[plateau.first].amplitude, middleOf(samples, plateau), {}, {}};
    if (volts && response.peak <= 0.0)
        return response;
    // Half the power: 1 / sqrt 2 of the voltage, 3 dB to two digits.
    const double level =
        volts ? response.peak / std::numbers::sqrt2 : response.peak - 20.0 * std::log10(std::numbers::sqrt2);
    response.lower = crossing(samples, plateau.first, -1, level);
    response.upper = crossing(samples, plateau.last, 1, level);
    if (samples.front().frequency > samples.back().frequency)
        std::swap(response.lower, response.upper);
    return response;
}

SweepResponse responseOf(const SweepTable &table, const Configuration &configuration)
{
    const bool linear = isLinearScale(configuration.scaleType);
    const Sweep &sweep = table.sweep();
    if (!sweep.detector)
        return responseOf(samplesOfAmplitudes(table), linear ? AmplitudeUnit::Volt : AmplitudeUnit::Decibel);
    SweepResponse response = responseOf(samplesOfCounts(table, sweep), AmplitudeUnit::Volt);
    if (!linear)
        response.peak = decibelsOf(response.peak, configuration.scaleType);
    return response;
}

} // namespace calvorn
