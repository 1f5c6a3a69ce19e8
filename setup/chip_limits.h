// SPDX-License-Identifier: MIT
#pragma once

#include "setup/set_up_values.h"

namespace calvorn {

// Checks clock and highest frequency against the limits of the chosen chip (for the MiniVNA, of the instrument).
// Returns one sentence for each violation, or one that everything is within the limits. The limits are from the data
// sheets; see docs/hardware/lpt-board.md.
QString chipVerdict(const SetUpValues &values);

} // namespace calvorn
