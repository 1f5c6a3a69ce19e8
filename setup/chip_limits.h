// SPDX-License-Identifier: MIT
#pragma once

#include "setup/set_up_values.h"

namespace calvorn {

// Checks the clock and the highest frequency against the selected chip's limits (for the MiniVNA, the instrument's).
// Returns a message for each violation, or a message that everything is within the limits. The limits are from the data
// sheets; see docs/hardware/lpt-board.md.
QString chipVerdict(const SetUpValues &values);

} // namespace calvorn
