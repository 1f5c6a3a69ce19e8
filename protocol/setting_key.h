// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/devices.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace calvorn {

// A key of the settings file and its default, used if the text is missing or empty.
struct SettingKey
{
    const char *section;
    const char *name;
    const char *fallback;

    constexpr SettingKey in(const char *otherSection) const { return {otherSection, name, fallback}; }

    // Compares the place in the file, not the default.
    constexpr bool operator==(const SettingKey &other) const
    {
        return std::string_view(section) == other.section && std::string_view(name) == other.name;
    }
};

// Return the text in the file; readText() returns an empty text for a missing key. Neither function writes.
QString readText(const QString &path, const SettingKey &key);
QString readTextOrDefault(const QString &path, const SettingKey &key);

// The settings file itself, in the folder that core/program_folders.h chooses.
inline constexpr const char *kSettingsFileName = "Calvorn.ini";

inline constexpr const char *kConfigSection = "Config";
inline constexpr const char *kCalvornSection = "Calvorn";

// Keys of the program that the server also reads. core/settings_table.h contains all keys of the program.
inline constexpr SettingKey kDdsDevice{kConfigSection, "DDS Device", factsOf(kDefaultDdsChip).name};
inline constexpr SettingKey kDdsMultiplier{kConfigSection, "DDS Multiplier", "1"};
inline constexpr SettingKey kDdsXtalFreq{kConfigSection, "DDS Xtal freq", kDefaultXtalText}; // Hz
// Time in microseconds that the PIC board lets the detector settle at each point; 0 selects the board's own default.
inline constexpr SettingKey kPicSettling{"Serial Port", "Settling", "0"};
inline constexpr SettingKey kAdcDevice{kConfigSection, "ADC Device", kAdc10Bit};
inline constexpr SettingKey kAux1Value{kCalvornSection, "Aux_1", "0"}; // bit i is step i
inline constexpr SettingKey kAux2Value{kCalvornSection, "Aux_2", "0"};

} // namespace calvorn
