// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/lpt_wiring.h"

#include <QString>

#include <array>

namespace calvorn {

inline constexpr int kConnectorPins = 25;

// The function of a pin on the parallel-port connector.
struct PinUse
{
    enum class Kind { Unused, Output, Input, Ground };

    int number = 0; // 1 to 25
    QString line;   // port line: "D0", "STROBE"; empty for ground
    QString signal; // text for the user; empty if unused
    Kind kind = Kind::Unused;
    bool invertedByBoard = false;
};

// Returns the pins in order, starting with pin 1.
std::array<PinUse, kConnectorPins> pinUses(const BoardWiring &wiring);

} // namespace calvorn
