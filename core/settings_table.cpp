// SPDX-License-Identifier: MIT
#include "core/settings_table.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace calvorn {

namespace {

using Kind = SettingKind;
using Hardware = HardwareSettings;
using Program = Configuration;
using Window = WindowSettings;

constexpr const char *kConfig = kConfigSection;
constexpr const char *kDebug = kLog.section;
constexpr const char *kCalvorn = kCalvornSection;

constexpr auto kTable = std::to_array<SettingRow>({
    {kInterface, Kind::Int16, &Hardware::interfaceType, {.port = 1, .apply = 1}},

    {kLog, Kind::Boolean, &Program::logDebug},
    {{kDebug, "USB API", "0"}, Kind::Boolean, &Program::usbApi},
    {{kDebug, "Slow CPU", "0"}, Kind::Int32, &Program::slowCpu},

    {kDdsDevice, Kind::Text, &Hardware::ddsDevice, {.hardware = 1, .apply = 2}},
    {kDdsMultiplier, Kind::Int16, &Hardware::ddsMultiplier, {.hardware = 2, .apply = 4}},
    {kDdsXtalFreq, Kind::Int32, &Hardware::ddsXtalFreq, {.hardware = 3, .apply = 3}},
    {{kConfig, "DDS Max freq", "60000000"},
     Kind::Int32,
     &Hardware::ddsMaxFreq,
     {.hardware = 4, .apply = 5},
     "DDS Max Freq"},
    {{kConfig, "DDS Min freq", "10"}, Kind::Int32, &Hardware::ddsMinFreq, {.hardware = 5, .apply = 6}, "DDS Min Freq"},
    {{kConfig, "DDS Offset", "0"}, Kind::Real, &Hardware::ddsOffset, {.shutdown = 15, .hardware = 6, .apply = 7}},

    {kAdcDevice, Kind::Text, &Hardware::adcDevice, {.hardware = 7, .apply = 8}},
    {kAdcOffset, Kind::Real, &Hardware::adcOffset, {.shutdown = 16, .hardware = 10, .apply = 10}},
    {{kConfig, "ADC Step", "0"}, Kind::Real, &Hardware::adcStep, {.hardware = 8, .apply = 9}},
    {{kConfig, "ADC Channel", "1"}, Kind::Int16, &Hardware::measuringMode, {.hardware = 9, .apply = 11}},

    {{"Parallel Port", "LPT", "&H378"}, Kind::Address, &Hardware::lptAddress, {.port = 2, .apply = 13}},
    {{"Serial Port", "CommPort", "6"}, Kind::Int16, &Hardware::commPort, {.port = 3, .apply = 12}},
    {{"Serial Port", "Settings", "115200,N,8,1"}, Kind::Text, &Program::serialSettings},

    {{kCalvorn, "Scale", "0"}, Kind::Int16, &Program::scaleType, {.shutdown = 10}},
    {{kCalvorn, "Start", "1000000"}, Kind::Int32, &Program::startFreq, {.shutdown = 1}},
    {{kCalvorn, "Stop", "10000000"}, Kind::Int32, &Program::stopFreq, {.shutdown = 2}},
    {{kCalvorn, "Marker 0", "0"}, Kind::Int16, &Window::markerIndex, {.shutdown = 3}},
    {{kCalvorn, "Max scaleV", "1.5"}, Kind::Real, &Program::maxScaleVolt, {.shutdown = 8}},
    {{kCalvorn, "Max scaleDb", "-40"}, Kind::Decibels, &Program::maxScaleDb, {.shutdown = 9}},
    {{kCalvorn, "Sweep mode", "0"}, Kind::Int16, &Program::sweepSpeed, {.shutdown = 11}},
    {kCursorMode, Kind::Int16, &Program::cursorMode},
    {kAux1Value, Kind::Int16, &Program::aux1, {.shutdown = 12}},
    {kAux2Value, Kind::Int16, &Program::aux2, {.shutdown = 13}},
    {kPot2, Kind::Int16, &Program::pot2, {.shutdown = 14}},

    {kMarker3, Kind::MarkerLevel, &Window::marker3, {.shutdown = 6}},
    {{kCalvorn, "Marker 4", "0"}, Kind::MarkerLevel, &Window::marker4, {.shutdown = 7}},
    {{kCalvorn, "Marker 1", "1000000"}, Kind::MarkerFrequency, &Window::marker1, {.shutdown = 4}},
    {kMarker2, Kind::MarkerFrequency, &Window::marker2, {.shutdown = 5}},
});

template <typename Value>
constexpr bool fits(SettingKind kind)
{
    if constexpr (std::is_same_v<Value, std::int16_t>)
        return kind == Kind::Int16 || kind == Kind::Address;
    else if constexpr (std::is_same_v<Value, std::int32_t>)
        return kind == Kind::Int32 || kind == Kind::Decibels;
    else if constexpr (std::is_same_v<Value, bool>)
        return kind == Kind::Boolean;
    else if constexpr (std::is_same_v<Value, QString>)
        return kind == Kind::Text || kind == Kind::MarkerFrequency || kind == Kind::MarkerLevel;
    else
        return kind == Kind::Real;
}

struct FieldFits
{
    SettingKind kind;
    bool isInSetUp;

    template <typename Value, typename Record>
    constexpr bool operator()(Value Record::*) const
    {
        return fits<Value>(kind) && (!isInSetUp || std::is_same_v<Record, HardwareSettings>);
    }
};

// The set-up dialog's working copies contain only fields of HardwareSettings.
constexpr bool isConsistent(const SettingRow &row)
{
    const bool isInSetUp = row.places.port + row.places.hardware + row.places.apply > 0;
    return std::visit(FieldFits{row.kind, isInSetUp}, row.field);
}

// Checks that the places are numbered from 1 without gaps or duplicates.
constexpr bool isGapless(int SettingPlaces::*order)
{
    const auto isAt = [order](int place) {
        return std::count_if(kTable.begin(), kTable.end(),
                             [&](const SettingRow &row) { return row.places.*order == place; });
    };
    int place = 1;
    while (isAt(place) == 1)
        ++place;
    return isAt(0) + place - 1 == static_cast<int>(kTable.size());
}

static_assert(std::all_of(kTable.begin(), kTable.end(), isConsistent));
static_assert(isGapless(&SettingPlaces::shutdown) && isGapless(&SettingPlaces::port) &&
              isGapless(&SettingPlaces::hardware) && isGapless(&SettingPlaces::apply));

} // namespace

std::span<const SettingRow> settingsTable()
{
    return kTable;
}

QVector<const SettingRow *> settingsInOrder(int SettingPlaces::*order)
{
    QVector<const SettingRow *> rows;
    for (const SettingRow &row : kTable)
        if (row.places.*order > 0)
            rows.append(&row);
    std::sort(rows.begin(), rows.end(),
              [order](const SettingRow *a, const SettingRow *b) { return a->places.*order < b->places.*order; });
    return rows;
}

} // namespace calvorn
