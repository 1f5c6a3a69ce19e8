// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace_set.h"
#include "display/plot/plot_model.h"

#include <array>

namespace calvorn {

// Told apart by colour-blind eyes, too: from the palette of Okabe and Ito, made lighter for a black ground. On paper
// the styles of the lines tell them apart.
inline constexpr std::array<TraceStyle, TraceSet::kStored> kStoredStyles{{
    {0xFF56B4E9, Qt::DashLine},
    {0xFFE69F00, Qt::DotLine},
    {0xFFCC79A7, Qt::DashDotLine},
    {0xFF9AA0FF, Qt::DashDotDotLine},
}};
inline constexpr TraceStyle kAverageStyle{0xFFFFFFFF, Qt::SolidLine};
inline constexpr TraceStyle kMaxHoldStyle{0xFFFF7A45, Qt::DashLine};
inline constexpr TraceStyle kMinHoldStyle{0xFF1FC8A0, Qt::DotLine};
inline constexpr TraceStyle kLimitStyle{0xFFFF5050, Qt::SolidLine};

} // namespace calvorn
