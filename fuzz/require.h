// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

namespace calvorn::fuzz {

// Aborts the target if the condition is false, and libFuzzer reports a finding. Unlike assert(), it works in every
// build.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace calvorn::fuzz
