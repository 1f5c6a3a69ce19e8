// SPDX-License-Identifier: MIT
#pragma once

#include "display/plot/plot_model.h"

#include <array>
#include <cstddef>

namespace calvorn {

// These colours are distinguishable with red or green colour blindness: colours of similar hue differ in lightness. On
// paper, the curves differ in line style.
inline constexpr std::array<TraceStyle, 4> kStoredStyles{{
    {0xFF8FD3FF, Qt::DashLine},
    {0xFFF0A020, Qt::DotLine},
    {0xFFE8B4D0, Qt::DashDotLine},
    {0xFF4F6BFF, Qt::DashDotDotLine},
}};
inline constexpr TraceStyle kAverageStyle{0xFFFFFFFE, Qt::SolidLine};
inline constexpr TraceStyle kMaxHoldStyle{0xFFC05800, Qt::DashLine};
inline constexpr TraceStyle kMinHoldStyle{0xFF2E9E78, Qt::DotLine};
inline constexpr TraceStyle kLimitStyle{0xFFFF6A5A, Qt::SolidLine};

} // namespace calvorn
