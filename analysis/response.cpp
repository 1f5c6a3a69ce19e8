// SPDX-License-Identifier: MIT
#include "analysis/response.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace calvorn {

namespace {

constexpr double kBelowFloor = -std::numeric_limits<double>::infinity();

// Combines decibels with the trace's frequencies; reverses both for a descending sweep.
Response responseOver(const Trace &trace, std::vector<double> decibels, bool isRelative)
{
    Response response{{}, std::move(decibels), isRelative};
    response.frequencies.reserve(trace.volts.size());
    for (std::size_t i = 0; i < trace.volts.size(); ++i)
        response.frequencies.push_back(trace.frequencyAt(i));
    if (trace.step < 0.0) {
        std::ranges::reverse(response.frequencies);
        std::ranges::reverse(response.decibels);
    }
    return response;
}

double decibelsOf(double ratio)
{
    return ratio > 0.0 ? 20.0 * std::log10(ratio) : kBelowFloor;
}

// isBetter(a, b): returns whether a is preferred to b.
template <typename Better>
std::optional<Plateau> bestPlateau(std::span<const double> frequencies, std::span<const double> values, Better isBetter)
{
    std::optional<Plateau> best;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (std::isnan(values[i]))
            continue;
        Plateau plateau{i, i};
        while (i + 1 < values.size() && values[i + 1] == values[plateau.first])
            plateau.last = ++i;
        const double value = values[plateau.first];
        if (!best || isBetter(value, values[best->first])) {
            best = plateau;
        } else if (value == values[best->first] &&
                   (plateau.size() > best->size() || (plateau.size() == best->size() &&
                                                      middleOf(frequencies, plateau) < middleOf(frequencies, *best)))) {
            best = plateau;
        }
    }
    return best;
}

// hasReached(value, level): returns whether the value has reached the level.
template <typename Reached>
Crossing crossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                  int direction, double level, Reached hasReached)
{
    const auto size = static_cast<std::ptrdiff_t>(decibels.size());
    auto i = static_cast<std::ptrdiff_t>(from);
    for (std::ptrdiff_t next = i + direction; next >= 0 && next < size; i = next, next += direction) {
        const double inner = decibels[static_cast<std::size_t>(i)];
        const double outer = decibels[static_cast<std::size_t>(next)];
        if (std::isnan(outer))
            return {std::nullopt, Missing::Gap};
        if (!hasReached(outer, level))
            continue;
        if (std::isinf(inner) || std::isinf(outer))
            return {std::nullopt, Missing::BelowFloor};
        const double part = inner == outer ? 0.0 : (inner - level) / (inner - outer);
        const double near = frequencies[static_cast<std::size_t>(i)];
        return {near + part * (frequencies[static_cast<std::size_t>(next)] - near), Missing::Nothing};
    }
    return {std::nullopt, Missing::NoCrossing};
}

// Returns the lowest value between a peak and the next higher sample, gap or end of the curve in this direction.
double valleyBeside(std::span<const double> decibels, std::size_t summit, int direction)
{
    const double height = decibels[summit];
    double lowest = height;
    for (auto i = static_cast<std::ptrdiff_t>(summit) + direction;
         i >= 0 && i < static_cast<std::ptrdiff_t>(decibels.size()); i += direction) {
        const double value = decibels[static_cast<std::size_t>(i)];
        if (std::isnan(value) || value > height)
            break;
        lowest = std::min(lowest, value);
    }
    return lowest;
}

bool isSummit(std::span<const double> decibels, const Plateau &plateau)
{
    const double value = decibels[plateau.first];
    return std::isfinite(value) && plateau.first > 0 && plateau.last + 1 < decibels.size() &&
           decibels[plateau.first - 1] < value && decibels[plateau.last + 1] < value;
}

Plateau plateauAround(std::span<const double> decibels, std::size_t index)
{
    Plateau plateau{index, index};
    while (plateau.first > 0 && decibels[plateau.first - 1] == decibels[index])
        --plateau.first;
    while (plateau.last + 1 < decibels.size() && decibels[plateau.last + 1] == decibels[index])
        ++plateau.last;
    return plateau;
}

} // namespace

Response responseIn(const Trace &trace, double referenceVolts)
{
    std::vector<double> decibels;
    decibels.reserve(trace.volts.size());
    for (const double volts : trace.volts) {
        if (volts <= trace.floor)
            decibels.push_back(kBelowFloor);
        else
            decibels.push_back(std::isnan(volts) ? volts : decibelsOf(volts / referenceVolts));
    }
    return responseOver(trace, std::move(decibels), false);
}

Response relativeResponse(const Trace &trace, const Trace &reference)
{
    std::vector<double> decibels = relativeTo(trace, reference).ratios;
    for (std::size_t i = 0; i < decibels.size(); ++i) {
        if (!std::isnan(decibels[i]))
            decibels[i] = trace.volts[i] <= trace.floor ? kBelowFloor : decibelsOf(decibels[i]);
    }
    return responseOver(trace, std::move(decibels), true);
}

std::optional<Plateau> highestPlateau(std::span<const double> frequencies, std::span<const double> values)
{
    return bestPlateau(frequencies, values, std::greater<>());
}

std::optional<Plateau> lowestPlateau(std::span<const double> frequencies, std::span<const double> values)
{
    return bestPlateau(frequencies, values, std::less<>());
}

double middleOf(std::span<const double> frequencies, const Plateau &plateau)
{
    return (frequencies[plateau.first] + frequencies[plateau.last]) / 2.0;
}

Crossing fallingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                         int direction, double level)
{
    return crossing(frequencies, decibels, from, direction, level, std::less_equal<>());
}

Crossing risingCrossing(std::span<const double> frequencies, std::span<const double> decibels, std::size_t from,
                        int direction, double level)
{
    return crossing(frequencies, decibels, from, direction, level, std::greater_equal<>());
}

Crossings crossings(const Response &response, double belowPeakDb)
{
    const auto nowhere = [](Missing why) { return Crossings{{std::nullopt, why}, {std::nullopt, why}}; };
    if (response.isEmpty())
        return nowhere(Missing::NoSweep);
    const std::optional<Plateau> peak = highestPlateau(response.frequencies, response.decibels);
    if (!peak)
        return nowhere(Missing::Gap);
    if (std::isinf(response.decibels[peak->first]))
        return nowhere(Missing::BelowFloor);
    return crossingsBelow(response, *peak, belowPeakDb);
}

Crossings crossingsBelow(const Response &response, const Plateau &peak, double belowPeakDb)
{
    const double level = response.decibels[peak.first] - belowPeakDb;
    return {fallingCrossing(response.frequencies, response.decibels, peak.first, -1, level),
            fallingCrossing(response.frequencies, response.decibels, peak.last, 1, level)};
}

std::optional<std::size_t> nextPeak(const Response &response, std::size_t from, int direction, double prominenceDb)
{
    const std::span<const double> decibels = response.decibels;
    if (from >= decibels.size())
        return std::nullopt;
    Plateau plateau = plateauAround(decibels, from);
    while (direction > 0 ? plateau.last + 1 < decibels.size() : plateau.first > 0) {
        plateau = plateauAround(decibels, direction > 0 ? plateau.last + 1 : plateau.first - 1);
        if (!isSummit(decibels, plateau))
            continue;
        const double valley =
            std::max(valleyBeside(decibels, plateau.first, -1), valleyBeside(decibels, plateau.last, 1));
        if (decibels[plateau.first] - valley >= prominenceDb)
            return plateau.middle();
    }
    return std::nullopt;
}

} // namespace calvorn
