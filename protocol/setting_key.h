// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/devices.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace calvorn {

// A key of the settings file and its default, which takes the place of a text that is missing or empty.
struct SettingKey
{
    const char *section;
    const char *name;
    const char *fallback;

    constexpr SettingKey in(const char *otherSection) const { return {otherSection, name, fallback}; }

    // The same place in the file.
    constexpr bool operator==(const SettingKey &other) const
    {
        return std::string_view(section) == other.section && std::string_view(name) == other.name;
    }
};

// The text in the file; empty when it is missing. Neither of the two writes.
QString readText(const QString &path, const SettingKey &key);
QString readTextOrDefault(const QString &path, const SettingKey &key);

// The settings file itself, in the folder that core/settings_folder.h chooses.
inline constexpr const char *kSettingsFileName = "Calvorn.ini";

inline constexpr const char *kConfigSection = "Config";
inline constexpr const char *kCalvornSection = "Calvorn";

// Keys of the program that the server reads, too. core/settings_table.h has all keys of the program.
inline constexpr SettingKey kDdsDevice{kConfigSection, "DDS Device", factsOf(kDefaultDdsChip).name};
inline constexpr SettingKey kDdsMultiplier{kConfigSection, "DDS Multiplier", "1"};
inline constexpr SettingKey kDdsXtalFreq{kConfigSection, "DDS Xtal freq", kDefaultXtalText}; // Hz
// Microseconds that the PIC board lets the detector settle at each point; 0: as the board does by itself.
inline constexpr SettingKey kPicSettling{"Serial Port", "Settling", "0"};
inline constexpr SettingKey kAdcDevice{kConfigSection, "ADC Device", kAdc10Bit};
inline constexpr SettingKey kAux1Value{kCalvornSection, "Aux_1", "0"}; // bit i is step i
inline constexpr SettingKey kAux2Value{kCalvornSection, "Aux_2", "0"};

} // namespace calvorn
