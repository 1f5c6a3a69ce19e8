// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

namespace calvorn {

// Returns one sentence for the user when the frequency is above the generator's useful maximum or above half its clock.
// Such a frequency is allowed, because amateurs use the image. Returns an empty text for all others, including those
// that the generator cannot make at all. hertz: the frequency that the user asked for; offsetHz is added to it.
QString remarkOnFrequency(std::int64_t hertz, double offsetHz, const DdsClock &clock);

} // namespace calvorn
