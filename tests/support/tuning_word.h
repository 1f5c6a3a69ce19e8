// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>

namespace calvorn::test {

// Returns the exact tuning word of a frequency (Hz), rounded to an integer, for a generator clock of 125 MHz.
inline std::int64_t exactWord(std::int64_t hertz)
{
    return std::llround(std::ldexp(static_cast<long double>(hertz), 32) / 125e6L);
}

} // namespace calvorn::test
