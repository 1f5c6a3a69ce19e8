// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace calvorn {

// The port is gone, refused an access, or is wired in a way that makes no sense. what() is one sentence for the user.
class PortError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace calvorn
