// SPDX-License-Identifier: MIT
#include "analysis/results.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

namespace calvorn {

namespace {

// The keys are listed only in the arrays below, which also define their order.
struct Entry
{
    const char *key;
    ResultUnit unit;
};

constexpr std::array kFilter{
    Entry{"peak", ResultUnit::Decibel},
    Entry{"peakFreq", ResultUnit::Hertz},
    Entry{"loss", ResultUnit::Decibel},
    Entry{"bw3", ResultUnit::Hertz},
    Entry{"bw6", ResultUnit::Hertz},
    Entry{"bw60", ResultUnit::Hertz},
    Entry{"centre", ResultUnit::Hertz},
    Entry{"q", ResultUnit::One},
    Entry{"shape", ResultUnit::One},
    Entry{"ripple", ResultUnit::Decibel},
    Entry{"slopeLow", ResultUnit::DecibelPerOctave},
    Entry{"slopeHigh", ResultUnit::DecibelPerOctave},
};
constexpr std::array kNotch{
    Entry{"depth", ResultUnit::Decibel},
    Entry{"notchFreq", ResultUnit::Hertz},
    Entry{"bw3", ResultUnit::Hertz},
};
constexpr std::array kCrystal{
    Entry{"fs", ResultUnit::Hertz}, Entry{"fp", ResultUnit::Hertz}, Entry{"rm", ResultUnit::Ohm},
    Entry{"lm", ResultUnit::Henry}, Entry{"cm", ResultUnit::Farad}, Entry{"c0", ResultUnit::Farad},
    Entry{"q", ResultUnit::One},
};
constexpr std::array kMatch{
    Entry{"returnLoss", ResultUnit::Decibel}, Entry{"rho", ResultUnit::One},    Entry{"swr", ResultUnit::One},
    Entry{"freq", ResultUnit::Hertz},         Entry{"bw15", ResultUnit::Hertz}, Entry{"bw20", ResultUnit::Hertz},
};

template <std::size_t n>
constexpr std::array<const char *, n> keysOf(const std::array<Entry, n> &entries)
{
    std::array<const char *, n> keys{};
    for (std::size_t i = 0; i < n; ++i)
        keys[i] = entries[i].key;
    return keys;
}

constexpr auto kFilterKeys = keysOf(kFilter);
constexpr auto kNotchKeys = keysOf(kNotch);
constexpr auto kCrystalKeys = keysOf(kCrystal);
constexpr auto kMatchKeys = keysOf(kMatch);

// A number, or the reason why it is missing. Converts implicitly from either.
struct Value
{
    std::optional<double> number;
    Missing missing = Missing::Nothing;

    Value(double known)
        : number(known)
    {
    }
    Value(Missing why)
        : missing(why)
    {
    }
    Value(const Crossing &crossing)
        : number(crossing.frequency)
        , missing(crossing.missing)
    {
    }
};

// Computes a value from two others. If either is missing, returns its reason; if both are missing, the first reason.
template <typename Function>
Value from(const Value &first, const Value &second, Function function)
{
    if (!first.number)
        return first;
    if (!second.number)
        return second;
    return function(*first.number, *second.number);
}

template <typename Function>
Value from(const Value &value, Function function)
{
    return value.number ? Value(function(*value.number)) : value;
}

// Collects the results of one kind. Until it is set, each is missing for the given reason.
class Table
{
public:
    Table(std::span<const Entry> entries, Missing missing)
    {
        m_results.reserve(entries.size());
        for (const Entry &entry : entries)
            m_results.push_back({entry.key, entry.unit, std::nullopt, missing});
    }

    void set(const char *key, const Value &value)
    {
        for (Result &result : m_results) {
            if (std::strcmp(result.key, key) != 0)
                continue;
            result.value = value.number;
            result.missing = value.missing;
        }
    }

    Results take() { return std::move(m_results); }

private:
    Results m_results;
};

Value distanceOf(const Crossings &points)
{
    return from(points.lower, points.upper, [](double lower, double upper) { return Value(upper - lower); });
}

// Returns the reason why the whole curve yields no result, or Nothing.
Missing whyNothing(const Response &response, const std::optional<Plateau> &highest)
{
    if (response.isEmpty())
        return Missing::NoSweep;
    if (!highest)
        return Missing::Gap;
    return std::isinf(response.decibels[highest->first]) ? Missing::BelowFloor : Missing::Nothing;
}

Value rippleBetween(const Response &response, const Plateau &peak, const Crossings &points)
{
    return from(points.lower, points.upper, [&](double lower, double upper) {
        double lowest = response.decibels[peak.first];
        for (std::size_t i = 0; i < response.frequencies.size(); ++i) {
            if (response.frequencies[i] >= lower && response.frequencies[i] <= upper)
                lowest = std::min(lowest, response.decibels[i]);
        }
        return Value(response.decibels[peak.first] - lowest);
    });
}

// inner, outer: the -6 dB and -20 dB points on one side.
Value slopeBetween(const Crossing &inner, const Crossing &outer)
{
    return from(inner, outer, [](double near, double far) {
        const double octaves = std::abs(std::log2(near / far));
        return std::isfinite(octaves) && octaves > 0.0 ? Value((20.0 - 6.0) / octaves) : Value(Missing::NoCrossing);
    });
}

Value quotient(const Value &dividend, const Value &divisor)
{
    return from(dividend, divisor,
                [](double a, double b) { return b > 0.0 ? Value(a / b) : Value(Missing::NoCrossing); });
}

// Returns the width of a dip: the distance between the points on both sides at which the curve has risen to a level.
Value widthAt(const Response &response, const Plateau &minimum, double level)
{
    if (response.decibels[minimum.first] >= level)
        return Missing::NotReached;
    return distanceOf({risingCrossing(response.frequencies, response.decibels, minimum.first, -1, level),
                       risingCrossing(response.frequencies, response.decibels, minimum.last, 1, level)});
}

// A peak or a minimum.
struct Extremum
{
    double frequency; // Hz
    double decibels;
};

// Refines a single-sample plateau with a parabola through the sample and its neighbours.
Extremum refined(const Response &response, const Plateau &plateau)
{
    const std::size_t at = plateau.first;
    const Extremum asMeasured{middleOf(response.frequencies, plateau), response.decibels[at]};
    if (plateau.size() > 1 || at == 0 || at + 1 == response.decibels.size())
        return asMeasured;
    const double before = response.decibels[at - 1];
    const double after = response.decibels[at + 1];
    const double curvature = before - 2.0 * response.decibels[at] + after;
    if (!std::isfinite(curvature) || curvature == 0.0)
        return asMeasured;
    const double shift = 0.5 * (before - after) / curvature; // in samples
    const double distance = (response.frequencies[at + 1] - response.frequencies[at - 1]) / 2.0;
    return {asMeasured.frequency + shift * distance, asMeasured.decibels - 0.25 * (before - after) * shift};
}

Value parallelResonance(const Response &response, const Plateau &peak)
{
    const std::size_t first = peak.last + 1;
    std::size_t end = first;
    while (end < response.decibels.size() && !std::isnan(response.decibels[end]))
        ++end;
    const Missing why = end < response.decibels.size() ? Missing::Gap : Missing::NoParallelResonance;
    const std::span frequencies(response.frequencies.data() + first, end - first);
    const std::span decibels(response.decibels.data() + first, end - first);
    const std::optional<Plateau> minimum = lowestPlateau(frequencies, decibels);
    if (!minimum || decibels[minimum->first] >= decibels.back())
        return why;
    return refined(response, {first + minimum->first, first + minimum->last}).frequency;
}

// Sets a crystal's circuit elements. An element is missing if any value that it depends on is missing.
void setElements(Table &table, const Extremum &peak, const Value &bandwidth, const Value &parallel, double ohms)
{
    constexpr double kTurn = 2.0 * std::numbers::pi;
    const double resistance = 2.0 * ohms * (std::pow(10.0, -peak.decibels / 20.0) - 1.0);
    if (resistance < 0.0) {
        for (const char *key : {"rm", "lm", "cm", "c0", "q"})
            table.set(key, Missing::NotBelowReference);
        return;
    }
    const Value lm = from(quotient(2.0 * ohms + resistance, bandwidth), [](double value) { return value / kTurn; });
    const double omega = kTurn * peak.frequency;
    const Value cm = from(lm, [&](double value) { return 1.0 / (omega * omega * value); });
    table.set("rm", resistance);
    table.set("lm", lm);
    table.set("cm", cm);
    table.set("c0", from(cm, parallel, [&](double value, double fp) {
                  const double ratio = fp / peak.frequency;
                  return ratio > 1.0 ? Value(value / (ratio * ratio - 1.0)) : Value(Missing::NoParallelResonance);
              }));
    table.set("q", from(lm, [&](double value) {
                  return resistance > 0.0 ? Value(omega * value / resistance) : Value(Missing::NotBelowReference);
              }));
}

} // namespace

Results filterResults(const Response &response)
{
    const std::optional<Plateau> peak = highestPlateau(response.frequencies, response.decibels);
    const Missing why = whyNothing(response, peak);
    Table table(kFilter, why);
    if (why != Missing::Nothing)
        return table.take();
    const Crossings half = crossingsBelow(response, *peak, kHalfPowerDb);
    const Crossings six = crossingsBelow(response, *peak, 6.0);
    const Crossings twenty = crossingsBelow(response, *peak, 20.0);
    const Value bandwidth = distanceOf(half);
    const Value sixWide = distanceOf(six);
    const Value sixty = distanceOf(crossingsBelow(response, *peak, 60.0));
    const Value centre =
        from(half.lower, half.upper, [](double lower, double upper) { return Value((lower + upper) / 2.0); });
    const double height = response.decibels[peak->first];
    table.set("peak", height);
    table.set("peakFreq", middleOf(response.frequencies, *peak));
    table.set("loss", response.isRelative ? Value(-height) : Value(Missing::NoReference));
    table.set("bw3", bandwidth);
    table.set("bw6", sixWide);
    table.set("bw60", sixty);
    table.set("centre", centre);
    table.set("q", quotient(centre, bandwidth));
    table.set("shape", quotient(sixty, sixWide));
    table.set("ripple", rippleBetween(response, *peak, half));
    table.set("slopeLow", slopeBetween(six.lower, twenty.lower));
    table.set("slopeHigh", slopeBetween(six.upper, twenty.upper));
    return table.take();
}

Results notchResults(const Response &response)
{
    const std::optional<Plateau> highest = highestPlateau(response.frequencies, response.decibels);
    const Missing why = whyNothing(response, highest);
    Table table(kNotch, why);
    if (why != Missing::Nothing)
        return table.take();
    const std::optional<Plateau> lowest = lowestPlateau(response.frequencies, response.decibels);
    const double outside = response.decibels[highest->first];
    const double bottom = response.decibels[lowest->first];
    table.set("depth", std::isinf(bottom) ? Value(Missing::BelowFloor) : Value(outside - bottom));
    table.set("notchFreq", middleOf(response.frequencies, *lowest));
    table.set("bw3", widthAt(response, *lowest, outside - kHalfPowerDb));
    return table.take();
}

Results crystalResults(const Response &response, double ohms)
{
    const std::optional<Plateau> highest = highestPlateau(response.frequencies, response.decibels);
    Missing why = whyNothing(response, highest);
    if (why != Missing::NoSweep && !response.isRelative)
        why = Missing::NoReference;
    Table table(kCrystal, why);
    if (why != Missing::Nothing)
        return table.take();
    const Extremum peak = refined(response, *highest);
    const Value parallel = parallelResonance(response, *highest);
    const double level = peak.decibels - kHalfPowerDb;
    const Value bandwidth =
        distanceOf({fallingCrossing(response.frequencies, response.decibels, highest->first, -1, level),
                    fallingCrossing(response.frequencies, response.decibels, highest->last, 1, level)});
    table.set("fs", peak.frequency);
    table.set("fp", parallel);
    setElements(table, peak, bandwidth, parallel, ohms);
    return table.take();
}

Results matchResults(const Response &response)
{
    const std::optional<Plateau> lowest = lowestPlateau(response.frequencies, response.decibels);
    Missing why = Missing::Nothing;
    if (response.isEmpty())
        why = Missing::NoSweep;
    else if (!response.isRelative)
        why = Missing::NoReference;
    else if (!lowest)
        why = Missing::Gap;
    Table table(kMatch, why);
    if (why != Missing::Nothing)
        return table.take();
    const double bottom = response.decibels[lowest->first];
    if (std::isinf(bottom)) {
        for (const char *key : {"returnLoss", "rho", "swr"})
            table.set(key, Missing::BelowFloor);
    } else {
        const double rho = std::pow(10.0, bottom / 20.0);
        table.set("returnLoss", -bottom);
        table.set("rho", rho);
        table.set("swr", rho < 1.0 ? Value((1.0 + rho) / (1.0 - rho)) : Value(Missing::NotBelowReference));
    }
    // An SWR of s corresponds to a reflection coefficient of (s - 1) / (s + 1).
    table.set("freq", middleOf(response.frequencies, *lowest));
    table.set("bw15", widthAt(response, *lowest, 20.0 * std::log10(0.5 / 2.5)));
    table.set("bw20", widthAt(response, *lowest, 20.0 * std::log10(1.0 / 3.0)));
    return table.take();
}

Results resultsOf(ResultKind kind, const Response &response, double ohms)
{
    switch (kind) {
    case ResultKind::Filter:
        return filterResults(response);
    case ResultKind::Notch:
        return notchResults(response);
    case ResultKind::Crystal:
        return crystalResults(response, ohms);
    case ResultKind::Match:
        return matchResults(response);
    }
    return {};
}

std::span<const char *const> resultKeys(ResultKind kind)
{
    switch (kind) {
    case ResultKind::Filter:
        return kFilterKeys;
    case ResultKind::Notch:
        return kNotchKeys;
    case ResultKind::Crystal:
        return kCrystalKeys;
    case ResultKind::Match:
        return kMatchKeys;
    }
    return {};
}

} // namespace calvorn
