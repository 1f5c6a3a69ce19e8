// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/acquisition_driver.h"

namespace calvorn {

// The driver of the configured interface; null for an interface type that has none.
AcquisitionDriver *makeDriver(const DriverContext &context, QObject *parent);

} // namespace calvorn
