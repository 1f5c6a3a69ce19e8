// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/devices.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace calvorn {

// A settings-file key and its default, which is used if the value is missing or empty.
struct SettingKey
{
    const char *section;
    const char *name;
    const char *fallback;

    constexpr SettingKey in(const char *otherSection) const { return {otherSection, name, fallback}; }

    // Compares section and name, not the default.
    constexpr bool operator==(const SettingKey &other) const
    {
        return std::string_view(section) == other.section && std::string_view(name) == other.name;
    }
};

// Return the stored value. For a missing key, readText() returns an empty string. Neither function writes the file.
QString readText(const QString &path, const SettingKey &key);
QString readTextOrDefault(const QString &path, const SettingKey &key);

// The name of the settings file; core/program_folders.h chooses its folder.
inline constexpr const char *kSettingsFileName = "Calvorn.ini";

inline constexpr const char *kConfigSection = "Config";
inline constexpr const char *kCalvornSection = "Calvorn";

// Program settings that the server also reads. core/settings_table.h lists all program settings.
inline constexpr SettingKey kDdsDevice{kConfigSection, "DDS Device", factsOf(kDefaultDdsChip).name};
inline constexpr SettingKey kDdsMultiplier{kConfigSection, "DDS Multiplier", "1"};
inline constexpr SettingKey kDdsXtalFreq{kConfigSection, "DDS Xtal freq", kDefaultXtalText}; // Hz
// Settling time of the PIC board's detector at each point, in microseconds; 0 selects the board's own default.
inline constexpr SettingKey kPicSettling{"Serial Port", "Settling", "0"};
inline constexpr SettingKey kAdcDevice{kConfigSection, "ADC Device", kAdc10Bit};
inline constexpr SettingKey kAux1Value{kCalvornSection, "Aux_1", "0"}; // bit i is step i
inline constexpr SettingKey kAux2Value{kCalvornSection, "Aux_2", "0"};

} // namespace calvorn
