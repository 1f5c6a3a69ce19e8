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

// An auxiliary output of the parallel-port board.
struct AuxValues
{
    bool enabled = false;
    bool inverse = false;
    QString title;
    std::array<QString, kAuxSteps> captions; // blank if the step is not used
    std::array<QString, kAuxSteps> weights;  // whole numbers
};

// The working copies of the set-up, which are edited by its pages and written by "Apply".
struct SetUpValues : HardwareSettings
{
    std::array<AuxValues, 2> aux;
    QString potMax; // 0 to 255; if either is empty, there is no potentiometer
    QString potMin;
    bool isLawChosen = false; // by the user; otherwise, "Apply" leaves the law in the file unchanged, even if invalid
};

inline constexpr std::array<const char *, 3> kDdsDevices = {kDdsChips[0].name, kDdsChips[1].name, kDdsChips[2].name};
inline constexpr std::array<const char *, 2> kAdcDevices = {kAdc8Bit, kAdc10Bit};

// Loads the synthesiser and the detector from [Config], and the auxiliary outputs from their sections. A missing key
// yields its default and is not written. Returns an error message for each invalid value, except for the device with
// the key reportedDevice.
QStringList loadHardware(SetUpValues &values, const QString &path,
                         const std::optional<SettingKey> &reportedDevice = {});

// Loads the interface and the ports, which the prepared sections do not contain.
QStringList loadPorts(SetUpValues &values, const QString &path);

// Returns the section with the prepared configuration for an interface (1 to 3): "Interface1" to "Interface3".
QByteArray preparedSection(std::int16_t interfaceType);

// Whether the file contains the prepared configuration for this interface.
bool hasDefaults(const QString &path, std::int16_t interfaceType);

// Like loadHardware(), but loads the synthesiser and the detector from the prepared section.
QStringList loadDefaults(SetUpValues &values, const QString &path, std::int16_t interfaceType);

// Returns the entries that "Apply" writes, in order. Real numbers use the locale's decimal separator.
QVector<ProfileEntry> entriesOf(const SetUpValues &values);

} // namespace calvorn
