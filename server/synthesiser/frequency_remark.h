// SPDX-License-Identifier: MIT
#pragma once

#include "server/synthesiser/dds_clock.h"

namespace calvorn {

// Returns a message for the user if the frequency is above the generator's useful maximum or above half its clock. Such
// frequencies are allowed, because amateurs use the image. Returns an empty string for all other frequencies, including
// those that the generator cannot produce at all. hertz: the requested frequency, to which offsetHz is added.
QString remarkOnFrequency(std::int64_t hertz, double offsetHz, const DdsClock &clock);

} // namespace calvorn
