// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

namespace calvorn {

// A frequency above what the generator is good for, or above half its clock, is a legal wish (amateurs use the image)
// and worth one sentence for the user. Empty for all others, and for those that the generator cannot make at all.
// hertz: as the user asked for it; offsetHz is added to it.
QString remarkOnFrequency(std::int64_t hertz, double offsetHz, const DdsClock &clock);

} // namespace calvorn
