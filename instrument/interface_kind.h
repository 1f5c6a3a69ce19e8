// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

#include <optional>
#include <span>

namespace calvorn {

// What tells one hardware interface from the others, apart from how it is driven (AcquisitionDriver). One description
// for each; whoever would ask for the number of the interface asks for one of these properties instead.
struct InterfaceKind
{
    std::int16_t number;
    bool isOnParallelPort; // its port is an address; otherwise it is on a serial port with a COM number
    bool hasSpeeds;        // of the sweep, and so the frame that chooses one
    bool hasOutputs;       // auxiliary ones, and so their views

    // The channel of the converter. Where it is a measuring mode, its numbers have names; elsewhere it is not used.
    std::int16_t lowestChannel;
    std::int16_t highestChannel;
    bool channelIsMode;

    std::optional<double> highestFrequency; // Hz, of an instrument whose makers give one; otherwise that of the chip

    // What About says of it, its lines separated by CR, and what stands between the converter's name and its step.
    QString (*about)(const Configuration &configuration);
    QString (*aboutDetector)();

    // "parallel port 0x378", "serial port COM3"
    QString portName(const Configuration &configuration) const;
};

// In the order of their numbers.
std::span<const InterfaceKind> interfaceKinds();

// Null for a number that is no interface.
const InterfaceKind *interfaceKind(std::int16_t number);

} // namespace calvorn
