// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

#include <optional>
#include <span>

namespace calvorn {

// The properties of a hardware interface, apart from its driver (AcquisitionDriver). There is one description for each
// interface; use these properties instead of comparing the interface's number.
struct InterfaceKind
{
    std::int16_t number;
    bool isOnParallelPort; // its port has an address; otherwise it is a serial port with a COM number
    bool hasSpeeds;        // sweep speeds, and a frame to choose one
    bool hasOutputs;       // auxiliary outputs, and their views

    // The range of the converter's channel. A channel that is a measuring mode has a name; otherwise it is not used.
    std::int16_t lowestChannel;
    std::int16_t highestChannel;
    bool channelIsMode;

    std::optional<double> highestFrequency; // Hz; without a value, the limit of the chip applies

    // Text for About, with lines separated by CR, and the text between the converter's name and its step.
    QString (*about)(const Configuration &configuration);
    QString (*aboutDetector)();

    // Returns the port as text: "parallel port 0x378", "serial port COM3".
    QString portName(const Configuration &configuration) const;
};

// Sorted by number.
std::span<const InterfaceKind> interfaceKinds();

// Returns null for a number that is not an interface.
const InterfaceKind *interfaceKind(std::int16_t number);

} // namespace calvorn
