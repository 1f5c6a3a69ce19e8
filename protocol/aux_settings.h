// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/setting_key.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace calvorn {

inline constexpr std::size_t kAuxSteps = 8;

inline constexpr const char *kAux1Section = "Aux1";
inline constexpr const char *kAux2Section = "Aux2";

// The settings-file keys for an auxiliary output.
struct AuxKeys
{
    SettingKey title;
    SettingKey enabled; // the output is used if greater than 0
    SettingKey inverse;
    std::array<SettingKey, kAuxSteps> steps; // "caption;weight", or a single string for both
    SettingKey value;                        // value from the last session, in the window's section
};

constexpr AuxKeys auxKeysIn(const char *section, const char *title, const SettingKey &value)
{
    return {{section, "Title", title},
            {section, "Enabled", "0"},
            {section, "Inverse Logic", "0"},
            {{{section, "Step 0", "10dB;10"},
              {section, "Step 1", "20dB;20"},
              {section, "Step 2", "30dB;30"},
              {section, "Step 3", "40dB;40"},
              {section, "Step 4", "50dB;50"},
              {section, "Step 5", "60dB;60"},
              {section, "Step 6", "70dB;70"},
              {section, "Step 7", "80dB;80"}}},
            value};
}

// Output n has index n - 1.
inline constexpr std::array<AuxKeys, 2> kAuxKeys{auxKeysIn(kAux1Section, "Aux 1", kAux1Value),
                                                 auxKeysIn(kAux2Section, "Aux 2", kAux2Value)};

// The potentiometer on output 2, present only if both PotMax and PotMin are set.
inline constexpr SettingKey kPotMax{kAux2Section, "PotMax", ""};
inline constexpr SettingKey kPotMin{kAux2Section, "PotMin", ""};
inline constexpr SettingKey kI2cControl{kAux2Section, "i2c_control", "0"};
inline constexpr SettingKey kI2cCommand{kAux2Section, "i2c_command", "0"};

// An auxiliary output of the parallel-port board, as configured by [Aux1] or [Aux2] in the settings file.
struct AuxSettings
{
    bool enabled = false;
    bool inverse = false; // inverts every bit of the byte sent to the board

    // Returns the byte to send for an output value; bit i is step i.
    std::uint8_t byteFor(int value) const
    {
        return static_cast<std::uint8_t>(inverse ? ~static_cast<unsigned>(value) : static_cast<unsigned>(value));
    }
};

// The potentiometer on output 2.
struct PotSettings
{
    std::uint8_t lowest = 0; // position
    std::uint8_t highest = 0;
    std::uint8_t control = 0; // the first two bytes of each transfer, before the position
    std::uint8_t command = 0;
};

// Returns nullopt if "PotMin" or "PotMax" is missing. The two may be swapped; all values are clamped to the range of
// a byte.
std::optional<PotSettings> readPotSettings(const QString &path);

// output: 1 or 2. A missing file or key yields the default.
AuxSettings readAuxSettings(const QString &path, int output);

// Returns the initial byte on the output, before the program sends one: the stored value if the output is enabled,
// otherwise the inactive level.
std::uint8_t firstAuxByte(const QString &path, int output);

} // namespace calvorn
