// SPDX-License-Identifier: MIT
#include "analysis/limit_check.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

// Updates the verdict if the sample's margin to this limit is the smallest so far.
void judgeSample(LimitVerdict &verdict, bool isFirst, double frequency, double value, double limit, bool isUpper)
{
    const double margin = isUpper ? limit - value : value - limit;
    if (!isFirst && margin >= verdict.margin)
        return;
    verdict.frequency = frequency;
    verdict.value = value;
    verdict.limit = limit;
    verdict.margin = margin;
    verdict.isUpper = isUpper;
}

} // namespace

LimitVerdict judge(const LimitLines &limits, std::span<const double> frequencies, std::span<const double> amplitudes)
{
    LimitVerdict verdict;
    const std::size_t size = std::min(frequencies.size(), amplitudes.size());
    for (std::size_t i = 0; i < size; ++i) {
        const double value = amplitudes[i];
        if (std::isnan(value) || std::isnan(frequencies[i]))
            continue;
        const std::optional<double> upper = limits.upperAt(frequencies[i]);
        const std::optional<double> lower = limits.lowerAt(frequencies[i]);
        if (upper)
            judgeSample(verdict, verdict.judged == 0, frequencies[i], value, *upper, true);
        if (lower)
            judgeSample(verdict, verdict.judged == 0 && !upper, frequencies[i], value, *lower, false);
        if (upper || lower)
            ++verdict.judged;
        if ((upper && value > *upper) || (lower && value < *lower))
            ++verdict.outside;
    }
    return verdict;
}

} // namespace calvorn
