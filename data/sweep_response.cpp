// SPDX-License-Identifier: MIT
#include "data/sweep_response.h"

#include "core/number_text.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace calvorn {

namespace {

struct Sample
{
    double frequency;
    double amplitude;
};

std::vector<Sample> samplesOf(const SweepTable &table)
{
    const NumberText numbers;
    std::vector<Sample> samples;
    for (int row = 1; row <= kSweepPoints; ++row)
        samples.push_back({numbers.toDouble(table.text(row, SweepTable::FrequencyColumn)),
                           numbers.toDouble(table.text(row, SweepTable::AmplitudeColumn))});
    return samples;
}

// From the peak outwards, the first place where the curve has fallen to the level.
std::optional<double> crossing(const std::vector<Sample> &samples, std::size_t peak, int direction, double level)
{
    const auto last = static_cast<std::ptrdiff_t>(samples.size()) - 1;
    for (auto i = static_cast<std::ptrdiff_t>(peak); i + direction >= 0 && i + direction <= last; i += direction) {
        const Sample &inner = samples[static_cast<std::size_t>(i)];
        const Sample &outer = samples[static_cast<std::size_t>(i + direction)];
        if (outer.amplitude > level)
            continue;
        const double part = (inner.amplitude - level) / (inner.amplitude - outer.amplitude);
        return inner.frequency + part * (outer.frequency - inner.frequency);
    }
    return std::nullopt;
}

} // namespace

std::optional<double> SweepResponse::bandwidth() const
{
    return lower && upper ? std::optional(*upper - *lower) : std::nullopt;
}

SweepResponse responseOf(const SweepTable &table, bool linear)
{
    const std::vector<Sample> samples = samplesOf(table);
    std::size_t peak = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        if (samples[i].amplitude > samples[peak].amplitude)
            peak = i;
    SweepResponse response{samples[peak].amplitude, samples[peak].frequency, {}, {}};
    if (linear && response.peak <= 0.0)
        return response;
    // Half the power: 1 / sqrt 2 of the voltage, 3 dB to two digits.
    const double level =
        linear ? response.peak / std::numbers::sqrt2 : response.peak - 20.0 * std::log10(std::numbers::sqrt2);
    response.lower = crossing(samples, peak, -1, level);
    response.upper = crossing(samples, peak, 1, level);
    if (samples.front().frequency > samples.back().frequency)
        std::swap(response.lower, response.upper);
    return response;
}

} // namespace calvorn
