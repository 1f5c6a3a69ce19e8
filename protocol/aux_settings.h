// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace calvorn {

// An auxiliary output of the parallel-port board, as [Aux1] or [Aux2] of the settings file describes it.
struct AuxSettings
{
    bool enabled = false;
    bool inverse = false; // every bit of the byte is inverted on its way to the board

    // What the board is sent for a value of the output; bit i is step i.
    std::uint8_t byteFor(int value) const
    {
        return static_cast<std::uint8_t>(inverse ? ~static_cast<unsigned>(value) : static_cast<unsigned>(value));
    }
};

// The potentiometer of output 2.
struct PotSettings
{
    std::uint8_t lowest = 0; // positions
    std::uint8_t highest = 0;
    std::uint8_t control = 0; // the bytes before each position
    std::uint8_t command = 0;
};

// Nothing where "PotMin" or "PotMax" is missing. The two may stand in either order; all values are clamped to a byte.
std::optional<PotSettings> readPotSettings(const QString &path);

// output: 1 or 2. A missing file or key leaves the default.
AuxSettings readAuxSettings(const QString &path, int output);

// What the output shows before the program has sent anything: its stored value when it is enabled, otherwise its
// inactive level.
std::uint8_t firstAuxByte(const QString &path, int output);

} // namespace calvorn
