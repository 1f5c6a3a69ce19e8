// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/lpt_wiring.h"
#include "server/links/parallel_port.h"

#include <array>
#include <concepts>
#include <cstdint>
#include <memory>
#include <utility>

namespace calvorn {

// A port together with the wiring of the board behind it, and what its outputs are to show first.
struct OpenedPort
{
    // A port alone has a board with the standard wiring.
    template <std::derived_from<ParallelPort> Port>
    OpenedPort(std::unique_ptr<Port> opened, const BoardWiring &wired = {})
        : port(std::move(opened))
        , wiring(wired)
    {
    }

    std::unique_ptr<ParallelPort> port;
    BoardWiring wiring;
    std::array<std::uint8_t, 2> outputs{}; // of Aux1 and Aux2, until the program sets others
};

} // namespace calvorn
