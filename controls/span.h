// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <cstdint>

namespace calvorn {

// Start and stop of a frequency range in Hz. In a falling sweep, start is greater than stop.
struct Span
{
    std::int32_t start = 0;
    std::int32_t stop = 0;

    bool operator==(const Span &) const = default;
};

// Returns the nearest span within the generator's limits that is at least kMinSweepRange wide, or the limits themselves
// if they are narrower. A span of zero width becomes a rising one.
Span boundedSpan(const Configuration &limits, double start, double stop);

// Returns the span with its width multiplied by the factor, within the limits. The frequency "around" keeps its
// relative position as far as the limits allow.
Span scaledSpan(const Configuration &limits, const Span &span, double around, double factor);

} // namespace calvorn
