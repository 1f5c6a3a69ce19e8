// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

namespace calvorn::fuzz {

// Aborts the target, which libFuzzer reports as a finding, if the condition is false. Unlike assert(), works in every
// build.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace calvorn::fuzz
