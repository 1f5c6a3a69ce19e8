// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/acquisition_driver.h"

#include <memory>

namespace calvorn {

// The driver of the configured interface; null for an interface type that has none. The one place where the type of the
// interface decides.
std::unique_ptr<AcquisitionDriver> makeDriver(const DriverContext &context);

} // namespace calvorn
