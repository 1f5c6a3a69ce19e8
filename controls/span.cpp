// SPDX-License-Identifier: MIT
#include "controls/span.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

Span boundedSpan(const Configuration &limits, double start, double stop)
{
    const double lowest = limits.ddsMinFreq;
    const double highest = limits.ddsMaxFreq;
    auto [low, high] = std::minmax({start, stop});
    if (highest - lowest < kMinSweepRange) {
        low = lowest;
        high = highest;
    } else {
        const double missing = std::max(kMinSweepRange - (high - low), 0.0);
        low = std::clamp(low - missing / 2.0, lowest, highest - kMinSweepRange);
        high = std::clamp(high + missing / 2.0, low + kMinSweepRange, highest);
    }
    Span span{static_cast<std::int32_t>(std::llround(low)), static_cast<std::int32_t>(std::llround(high))};
    if (start > stop)
        std::swap(span.start, span.stop);
    return span;
}

Span scaledSpan(const Configuration &limits, const Span &span, double around, double factor)
{
    const double width = std::abs(static_cast<double>(span.stop) - span.start);
    // Stop at the minimum range: boundedSpan() would widen a narrower span around its middle instead of "around".
    const double least = width > 0.0 ? kMinSweepRange / width : factor;
    const double kept = factor < 1.0 ? std::max(factor, std::min(least, 1.0)) : factor;
    return boundedSpan(limits, around + (span.start - around) * kept, around + (span.stop - around) * kept);
}

} // namespace calvorn
