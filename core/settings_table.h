// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/number_text.h"
#include "protocol/setting_key.h"

#include <QVector>

#include <cstdint>
#include <span>
#include <variant>

namespace calvorn {

// Determines how a value is converted to and from text.
enum class SettingKind {
    Text,
    Int16,
    Int32,
    Real,            // float or double; written with the locale's decimal separator, read with either
    Boolean,         // "False", "True" or a number; 0 is false
    Address,         // Int16; the set-up dialog writes it as "&H" and hexadecimal digits
    Decibels,        // Int32, read with either decimal separator
    MarkerFrequency, // a whole number, stored as text
    MarkerLevel,     // a real number, stored as text
};

// The record member that contains the value.
using SettingField =
    std::variant<std::int16_t HardwareSettings::*, std::int32_t HardwareSettings::*, float HardwareSettings::*,
                 double HardwareSettings::*, QString HardwareSettings::*, std::int16_t Configuration::*,
                 std::int32_t Configuration::*, float Configuration::*, bool Configuration::*, QString Configuration::*,
                 std::int16_t WindowSettings::*, QString WindowSettings::*>;

// A setting's place in each order that differs from the table order: 1 is the first, 0 means not included.
struct SettingPlaces
{
    int shutdown = 0; // written by the program at shutdown
    int port = 0;     // read by the set-up dialog from the section given in the table
    int hardware = 0; // read by the set-up dialog from [Config] or from an interface's prepared section
    int apply = 0;    // written by the set-up dialog
};

struct SettingRow
{
    SettingKey key;
    SettingKind kind;
    SettingField field;
    SettingPlaces places = {};
    const char *appliedName = nullptr; // the set-up dialog's spelling of the key, used if the key is not in the file
};

// Keys that are also used outside the table, in addition to those in protocol/setting_key.h.
inline constexpr SettingKey kInterface{kConfigSection, "Interface", "2"};
inline constexpr SettingKey kLog{"Debug", "Log", "0"};
inline constexpr SettingKey kAdcOffset{kConfigSection, "ADC Offset", "5"}; // volts
inline constexpr SettingKey kCursorMode{kCalvornSection, "Cursor mode", "0"};
inline constexpr SettingKey kPot2{kCalvornSection, "Pot_2", "0"};
inline constexpr SettingKey kMarker3{kCalvornSection, "Marker 3", "0"};       // volts or dB
inline constexpr SettingKey kMarker2{kCalvornSection, "Marker 2", "2000000"}; // Hz

// Every setting that has a field in a record, in the order in which start-up reads the settings and writes missing
// defaults. The keys of the other sections are in protocol/ (aux_settings.h, lpt_wiring_parser.h and
// simulator_keys.h) and, for [Ports], in platform/serial_ports.h. docs/settings.md explains all of them.
std::span<const SettingRow> settingsTable();

// Returns the rows that are included in this order, sorted by place.
QVector<const SettingRow *> settingsInOrder(int SettingPlaces::*order);

// Returns a value as it is written to the file.
inline QString settingText(const NumberText &, std::int16_t value)
{
    return NumberText::fromInteger(value);
}
inline QString settingText(const NumberText &, std::int32_t value)
{
    return NumberText::fromInteger(value);
}
inline QString settingText(const NumberText &numbers, float value)
{
    return numbers.fromSingle(value);
}
inline QString settingText(const NumberText &numbers, double value)
{
    return numbers.fromDouble(value);
}
inline QString settingText(const NumberText &, bool value)
{
    return QString(value ? u'1' : u'0');
}
inline QString settingText(const NumberText &, const QString &value)
{
    return value;
}

} // namespace calvorn
