// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

namespace calvorn {

// Functions for the sweep plan: 400 samples from startFreq in steps of stepFreq. They use only the configuration.

// Returns |stop - start| in Hz. Throws RuntimeError(Overflow) if the result does not fit.
std::int32_t sweepRange(const Configuration &configuration);

// Widens a range narrower than kMinSweepRange, staying between 1 Hz and ddsMaxFreq. Returns true if the range changed:
// startNotice (may be empty) and stopNotice then describe the change. Otherwise clears both.
bool correctRange(Configuration &configuration);

// Returns (stop - start) / 400 in Hz, rounded half to even.
std::int32_t stepOfRange(std::int32_t startFreq, std::int32_t stopFreq);

} // namespace calvorn
