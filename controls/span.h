// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <cstdint>

namespace calvorn {

// The two ends of a frequency range in Hz; start lies above stop in a sweep downwards.
struct Span
{
    std::int32_t start = 0;
    std::int32_t stop = 0;

    bool operator==(const Span &) const = default;
};

// The nearest span inside the limits of the generator that is at least kMinSweepRange wide. Where the limits leave no
// room for that, the limits themselves. A span without a width rises.
Span boundedSpan(const Configuration &limits, double start, double stop);

// The span with its width multiplied by the factor, bounded. The frequency "around" keeps its place in it, as far as
// the limits allow.
Span scaledSpan(const Configuration &limits, const Span &span, double around, double factor);

} // namespace calvorn
