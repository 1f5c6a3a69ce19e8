// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/devices.h"

#include <QString>

#include <chrono>
#include <optional>

namespace calvorn {

// Data sheet values for a three-wire serial converter. Results are delayed by one frame: each frame clocks out the
// result of the conversion that the previous frame started.
struct SerialAdcType
{
    int bits;
    std::chrono::nanoseconds conversionTime; // from the falling edge of the last clock
    std::chrono::nanoseconds selectToClock;  // from chip select low to the first clock
    std::chrono::nanoseconds abortWindow;    // chip select going low this soon after the last clock aborts it

    int counts() const { return 1 << bits; }
};

// TLC549: 8 bits; a conversion takes 36 internal clocks.
inline constexpr SerialAdcType kTlc549 = {8, std::chrono::microseconds(17), std::chrono::nanoseconds(1400),
                                          std::chrono::nanoseconds(0)};
// TLC1549: 10 bits.
inline constexpr SerialAdcType kTlc1549 = {10, std::chrono::microseconds(21), std::chrono::nanoseconds(1425),
                                           std::chrono::microseconds(9)};

// Returns the converter with this name (kAdc8Bit or kAdc10Bit, ignoring case), or nullopt.
inline std::optional<SerialAdcType> serialAdcFromName(const QString &name)
{
    const QString wanted = name.trimmed().toLower();
    if (wanted == QLatin1String(kAdc8Bit))
        return kTlc549;
    if (wanted == QLatin1String(kAdc10Bit))
        return kTlc1549;
    return std::nullopt;
}

} // namespace calvorn
