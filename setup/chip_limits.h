// SPDX-License-Identifier: MIT
#pragma once

#include "setup/set_up_values.h"

namespace calvorn {

// Whether the clock and the highest frequency lie within the limits of the chosen chip (or, for the MiniVNA, of the
// instrument): one sentence for each that does not, or one that says that all is well. Limits from the data sheets;
// see docs/hardware/lpt-board.md.
QString chipVerdict(const SetUpValues &values);

} // namespace calvorn
