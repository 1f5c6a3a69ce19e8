// SPDX-License-Identifier: MIT
// Curves of known devices, and closed-form expressions for their properties.
#pragma once

#include "analysis/results.h"
#include "analysis/trace.h"

#include <QTest>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace calvorn::test {

inline constexpr double kPi = std::numbers::pi;
inline constexpr std::size_t kSamples = 400;

// Samples a curve at 400 points, without noise and with a very low detector floor.
inline Trace sampled(double start, double stop, const std::function<double(double)> &voltsAt)
{
    Trace trace;
    trace.start = start;
    trace.step = (stop - start) / (kSamples - 1);
    trace.floor = 1e-9;
    for (std::size_t i = 0; i < kSamples; ++i)
        trace.volts.push_back(voltsAt(start + static_cast<double>(i) * trace.step));
    return trace;
}

// A Butterworth band-pass: |H|^2 = 1 / (1 + (x / width)^(2 order)) with x = f/f0 - f0/f.
struct Butterworth
{
    int order;
    double middle; // geometric mean, in Hz
    double width;  // -3 dB bandwidth relative to the middle

    double at(double hertz) const
    {
        const double x = (hertz / middle - middle / hertz) / width;
        return 1.0 / std::sqrt(1.0 + std::pow(x * x, order));
    }
    // Returns the |x| at which the response has fallen by this many dB.
    double detuning(double decibels) const
    {
        return width * std::pow(std::pow(10.0, decibels / 10.0) - 1.0, 0.5 / order);
    }
    double lower(double decibels) const
    {
        const double half = detuning(decibels) / 2.0;
        return middle * (std::sqrt(1.0 + half * half) - half);
    }
    double upper(double decibels) const
    {
        const double half = detuning(decibels) / 2.0;
        return middle * (std::sqrt(1.0 + half * half) + half);
    }
    double bandwidth(double decibels) const { return middle * detuning(decibels); }
};

// A crystal between a source and a load of `ohms` each: a series branch with a parallel capacitance.
struct Crystal
{
    double rm;
    double lm;
    double cm;
    double c0;
    double ohms;

    double series() const { return 1.0 / (2.0 * kPi * std::sqrt(lm * cm)); }
    double parallel() const { return series() * std::sqrt(1.0 + cm / c0); }
    // Returns the response relative to a short circuit in place of the crystal.
    double at(double hertz) const
    {
        const double omega = 2.0 * kPi * hertz;
        const std::complex<double> branch(rm, omega * lm - 1.0 / (omega * cm));
        const std::complex<double> admittance = 1.0 / branch + std::complex<double>(0.0, omega * c0);
        return std::abs(2.0 * ohms / (2.0 * ohms + 1.0 / admittance));
    }
};

// An antenna, modelled as a series resonant circuit, on a 50-ohm line.
struct Antenna
{
    double ohms;
    double resonance; // Hz
    double reactance; // of the inductance at resonance, in ohms

    double reflectionAt(double hertz) const
    {
        const std::complex<double> impedance(ohms, reactance * (hertz / resonance - resonance / hertz));
        return std::abs((impedance - 50.0) / (impedance + 50.0));
    }
    double swr() const { return ohms > 50.0 ? ohms / 50.0 : 50.0 / ohms; }
    // Returns the width of the frequency range in which the SWR is within the limit.
    double bandwidth(double limit) const
    {
        const double g = (limit - 1.0) / (limit + 1.0);
        const double sum = ohms + 50.0;
        const double difference = ohms - 50.0;
        const double x = std::sqrt((g * g * sum * sum - difference * difference) / (1.0 - g * g));
        return resonance * x / reactance;
    }
};

// A resonant trap: |H|^2 = (deepest^2 + x^2) / (1 + x^2) with x = q (f/f0 - f0/f).
struct Notch
{
    double middle; // Hz
    double q;
    double deepest; // voltage ratio at the middle

    double at(double hertz) const
    {
        const double x = q * (hertz / middle - middle / hertz);
        return std::sqrt((deepest * deepest + x * x) / (1.0 + x * x));
    }
    // Returns the notch width at this voltage ratio.
    double width(double ratio) const
    {
        const double square = ratio * ratio;
        return middle / q * std::sqrt((square - deepest * deepest) / (1.0 - square));
    }
};

inline const Result &resultOf(const Results &results, const char *key)
{
    for (const Result &result : results) {
        if (qstrcmp(result.key, key) == 0)
            return result;
    }
    qFatal("no result %s", key);
}

inline bool isNear(const Results &results, const char *key, double expected, double bound)
{
    const Result &result = resultOf(results, key);
    if (result.value && result.missing == Missing::Nothing && std::abs(*result.value - expected) <= bound)
        return true;
    qWarning("%s: %.10g (missing %d), expected %.10g within %.3g", key, result.value.value_or(std::nan("")),
             static_cast<int>(result.missing), expected, bound);
    return false;
}

// Allows an error of 0.1 %.
inline bool isNear(const Results &results, const char *key, double expected)
{
    return isNear(results, key, expected, 0.001 * std::abs(expected));
}

inline bool isMissing(const Results &results, const char *key, Missing why)
{
    const Result &result = resultOf(results, key);
    if (!result.value && result.missing == why)
        return true;
    qWarning("%s: %.10g, missing %d, expected %d", key, result.value.value_or(std::nan("")),
             static_cast<int>(result.missing), static_cast<int>(why));
    return false;
}

} // namespace calvorn::test
