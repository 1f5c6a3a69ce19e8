// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace calvorn {

// The port has disappeared, refused an access or has unusable wiring. what() is one sentence for the user.
class PortError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace calvorn
