// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/acquisition_driver.h"

#include <memory>

namespace calvorn {

// Creates the driver for the configured interface, or returns null for an unknown interface type. The only function
// that selects code by interface type.
std::unique_ptr<AcquisitionDriver> makeDriver(const DriverContext &context);

} // namespace calvorn
