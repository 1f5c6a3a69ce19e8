// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/lpt_wiring.h"

#include <QString>

#include <array>

namespace calvorn {

inline constexpr int kConnectorPins = 25;

// What a pin of the parallel port's connector does for the board.
struct PinUse
{
    enum class Kind { Unused, Output, Input, Ground };

    int number = 0; // 1 to 25
    QString line;   // of the port: "D0", "STROBE"; empty for ground
    QString signal; // for the user; empty when unused
    Kind kind = Kind::Unused;
    bool invertedByBoard = false;
};

// By pin, the first is pin 1.
std::array<PinUse, kConnectorPins> pinUses(const BoardWiring &wiring);

} // namespace calvorn
