// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "platform/profile_file.h"

#include <QStringList>

#include <array>

namespace calvorn {

inline constexpr std::size_t kAuxSteps = 8;

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
struct SetUpValues
{
    std::int16_t interfaceType = kInterfaceLpt;
    QString ddsDevice; // one of kDdsDevices
    std::int16_t ddsMultiplier = 1;
    std::int32_t ddsXtalFreq = 0;   // Hz
    std::int32_t ddsMaxFreq = 0;    // Hz
    std::int32_t ddsMinFreq = 0;    // Hz
    double ddsOffset = 0.0;         // Hz
    QString adcDevice;              // one of kAdcDevices
    float adcStep = 0.0F;           // volts per count
    float adcOffset = 0.0F;         // volts
    std::int16_t measuringMode = 1; // as in Configuration
    std::int16_t commPort = 0;
    std::int16_t lptAddress = 0; // an address above 32767 is kept as the negative number of the same 16 bits
    std::array<AuxValues, 2> aux;
    QString potMax; // 0 to 255; either empty: there is no potentiometer
    QString potMin;
};

inline constexpr std::array<const char *, 3> kDdsDevices = {"AD9850", "AD9851", "AD9951"};
inline constexpr std::array<const char *, 2> kAdcDevices = {"8bit", "10bit"};

// Synthesiser and detector from this section, the auxiliary outputs from theirs; a key that is missing gives its
// default and stays missing. Returns a sentence for each value that could not be used, except for the device of the
// key reportedDevice.
QStringList loadHardware(SetUpValues &values, const QString &path, const char *section,
                         const QString &reportedDevice = {});

// Interface and ports; they have one place each.
QStringList loadPorts(SetUpValues &values, const QString &path);

// Whether the file holds a prepared configuration of this interface (1 to 3), in "Interface1" to "Interface3".
bool hasDefaults(const QString &path, std::int16_t interfaceType);

// loadHardware() from that section.
QStringList loadDefaults(SetUpValues &values, const QString &path, std::int16_t interfaceType);

// What "Apply" writes, in this order. Reals carry the locale's decimal separator.
QVector<ProfileEntry> entriesOf(const SetUpValues &values);

} // namespace calvorn
