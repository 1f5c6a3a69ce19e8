// SPDX-License-Identifier: MIT
#pragma once

#include "core/runtime_error.h"

#include <array>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <limits>

namespace calvorn {

// Integer arithmetic that throws RuntimeError(Overflow) instead of wrapping.

template <std::signed_integral T>
T checkedAdd(T a, T b)
{
    T result;
    if (__builtin_add_overflow(a, b, &result))
        throw RuntimeError(RuntimeError::Kind::Overflow);
    return result;
}

template <std::signed_integral T>
T checkedSubtract(T a, T b)
{
    T result;
    if (__builtin_sub_overflow(a, b, &result))
        throw RuntimeError(RuntimeError::Kind::Overflow);
    return result;
}

template <std::signed_integral T>
T checkedMultiply(T a, T b)
{
    T result;
    if (__builtin_mul_overflow(a, b, &result))
        throw RuntimeError(RuntimeError::Kind::Overflow);
    return result;
}

template <std::signed_integral T>
T checkedMagnitude(T a)
{
    return a < 0 ? checkedSubtract(T{0}, a) : a;
}

// Rounds half to even; relies on the default rounding mode, which the program never changes.
inline double roundHalfEven(double value)
{
    return std::nearbyint(value);
}

// exponent: 0 to 15.
inline double powerOfTen(int exponent)
{
    static constexpr std::array kPowers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    return kPowers[static_cast<std::size_t>(exponent)];
}

// Rounds half to even at the given number of decimals (0 to 15). The decimal value determines ties: 2.665 is a tie.
inline double roundToDecimals(double value, int decimals)
{
    const double power = powerOfTen(decimals);
    const double scaled = value * power;
    // Above 2^53, a double has no fraction to round.
    return std::abs(scaled) < 9007199254740992.0 ? roundHalfEven(scaled) / power : value;
}

// Rounds half to even to an integer type. Throws RuntimeError(Overflow) if the value is out of range or NaN.
template <std::signed_integral T>
T roundToInteger(double value)
{
    const double rounded = roundHalfEven(value);
    // max() + 1 is a power of two and therefore exact as a double; max() itself is not exact for 64 bits.
    const double limit = -static_cast<double>(std::numeric_limits<T>::min());
    if (!(rounded >= -limit && rounded < limit))
        throw RuntimeError(RuntimeError::Kind::Overflow);
    return static_cast<T>(rounded);
}

} // namespace calvorn
