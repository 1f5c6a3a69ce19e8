// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

#include <optional>
#include <span>

namespace calvorn {

// The properties of a hardware interface, apart from its driver (AcquisitionDriver). There is one description for each
// interface; use these properties instead of comparing interface numbers.
struct InterfaceKind
{
    std::int16_t number;
    bool isOnParallelPort; // its port has an address; otherwise it is a serial port with a COM number
    bool hasSpeeds;        // sweep speeds, and a frame for selecting one
    bool hasOutputs;       // auxiliary outputs and their views

    // Range of converter channels. If a channel is a measuring mode, it has a name; otherwise it is not used.
    std::int16_t lowestChannel;
    std::int16_t highestChannel;
    bool channelIsMode;

    std::optional<double> highestFrequency; // Hz; if unset, the chip's limit applies

    // Return the text for the About box, with lines separated by CR, and the text between converter name and step.
    QString (*about)(const Configuration &configuration);
    QString (*aboutDetector)();

    // Returns a name for the port, such as "parallel port 0x378" or "serial port COM3".
    QString portName(const Configuration &configuration) const;
};

// Sorted by number.
std::span<const InterfaceKind> interfaceKinds();

// Returns null if no interface has this number.
const InterfaceKind *interfaceKind(std::int16_t number);

} // namespace calvorn
