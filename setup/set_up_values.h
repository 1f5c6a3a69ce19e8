// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "platform/profile_file.h"
#include "protocol/aux_settings.h"
#include "protocol/devices.h"

#include <QStringList>

#include <array>
#include <optional>

namespace calvorn {

// One auxiliary output of the parallel-port board.
struct AuxValues
{
    bool enabled = false;
    bool inverse = false;
    QString title;
    std::array<QString, kAuxSteps> captions; // blank: the step is not used
    std::array<QString, kAuxSteps> weights;  // whole numbers
};

// The working copies of the set-up: what its pages edit and "Apply" writes.
struct SetUpValues : HardwareSettings
{
    std::array<AuxValues, 2> aux;
    QString potMax; // 0 to 255; either empty: there is no potentiometer
    QString potMin;
    bool isLawChosen = false; // by the user; otherwise "Apply" leaves the law in the file as it is, damaged or not
};

inline constexpr std::array<const char *, 3> kDdsDevices = {kDdsChips[0].name, kDdsChips[1].name, kDdsChips[2].name};
inline constexpr std::array<const char *, 2> kAdcDevices = {kAdc8Bit, kAdc10Bit};

// Synthesiser and detector from [Config], the auxiliary outputs from their sections; a key that is missing gives its
// default and stays missing. Returns a sentence for each value that could not be used, except for the device of the
// key reportedDevice.
QStringList loadHardware(SetUpValues &values, const QString &path,
                         const std::optional<SettingKey> &reportedDevice = {});

// Interface and ports; they have one place each.
QStringList loadPorts(SetUpValues &values, const QString &path);

// The section of the prepared configuration of an interface (1 to 3): "Interface1" to "Interface3".
QByteArray preparedSection(std::int16_t interfaceType);

// Whether the file holds such a configuration.
bool hasDefaults(const QString &path, std::int16_t interfaceType);

// As loadHardware(), with synthesiser and detector from that section.
QStringList loadDefaults(SetUpValues &values, const QString &path, std::int16_t interfaceType);

// What "Apply" writes, in this order. Reals carry the locale's decimal separator.
QVector<ProfileEntry> entriesOf(const SetUpValues &values);

} // namespace calvorn
