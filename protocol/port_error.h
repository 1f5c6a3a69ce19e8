// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace calvorn {

// The port has disappeared, an access has failed or the wiring is unusable. what() is a message for the user.
class PortError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace calvorn
