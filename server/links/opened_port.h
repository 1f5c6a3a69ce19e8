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

// An open port, the wiring of the board connected to it, and the initial values of the board's outputs.
struct OpenedPort
{
    // The default is a board with the standard wiring.
    template <std::derived_from<ParallelPort> Port>
    OpenedPort(std::unique_ptr<Port> opened, const BoardWiring &wired = {})
        : port(std::move(opened))
        , wiring(wired)
    {
    }

    std::unique_ptr<ParallelPort> port;
    BoardWiring wiring;
    std::array<std::uint8_t, 2> outputs{}; // the initial bytes of Aux1 and Aux2
};

} // namespace calvorn
