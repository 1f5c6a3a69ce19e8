// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

namespace calvorn::fuzz {

// Ends the target, which libFuzzer takes for a finding, unless this holds. Unlike assert() in every build.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace calvorn::fuzz
