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

// How a text becomes a value and back.
enum class SettingKind {
    Text,
    Int16,
    Int32,
    Real,            // float or double; written with the locale's decimal separator, read with either
    Boolean,         // "False" or a number that is 0, "True" or any other number
    Address,         // Int16, which the set-up writes as "&H" and hexadecimal digits
    Decibels,        // Int32, read with either decimal separator
    MarkerFrequency, // a whole number, kept as text
    MarkerLevel,     // a real number, kept as text
};

// Where the value is in the records.
using SettingField =
    std::variant<std::int16_t HardwareSettings::*, std::int32_t HardwareSettings::*, float HardwareSettings::*,
                 double HardwareSettings::*, QString HardwareSettings::*, std::int16_t Configuration::*,
                 std::int32_t Configuration::*, float Configuration::*, bool Configuration::*, QString Configuration::*,
                 std::int16_t WindowSettings::*, QString WindowSettings::*>;

// The place of a setting in each order that is not that of the table: 1 is the first, 0 means that it is not part of
// it.
struct SettingPlaces
{
    int shutdown = 0; // what the program writes when it ends
    int port = 0;     // what the set-up reads from the section in the table
    int hardware = 0; // what the set-up reads from [Config], or from the prepared section of an interface
    int apply = 0;    // what the set-up writes
};

struct SettingRow
{
    SettingKey key;
    SettingKind kind;
    SettingField field;
    SettingPlaces places = {};
    const char *appliedName = nullptr; // how the set-up spells the key where the file does not have it
};

// The keys that are named outside the table, besides those in protocol/setting_key.h.
inline constexpr SettingKey kInterface{kConfigSection, "Interface", "2"};
inline constexpr SettingKey kLog{"Debug", "Log", "0"};
inline constexpr SettingKey kAdcOffset{kConfigSection, "ADC Offset", "5"}; // volts
inline constexpr SettingKey kCursorMode{kCalvornSection, "Cursor mode", "0"};
inline constexpr SettingKey kPot2{kCalvornSection, "Pot_2", "0"};
inline constexpr SettingKey kMarker3{kCalvornSection, "Marker 3", "0"};       // volts or dB
inline constexpr SettingKey kMarker2{kCalvornSection, "Marker 2", "2000000"}; // Hz

// Every setting that has a field in a record, in the order in which the start of the program reads them and writes the
// missing defaults. The other sections have their keys in protocol/: aux_settings.h, lpt_wiring_parser.h and
// simulator_keys.h; [Ports] is in platform/serial_ports.h. docs/settings.md explains all of them.
std::span<const SettingRow> settingsTable();

// The rows that have a place in this order, sorted by it.
QVector<const SettingRow *> settingsInOrder(int SettingPlaces::*order);

// A value as it is written into the file.
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
