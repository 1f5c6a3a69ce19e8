// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

namespace calvorn {

// The plan of a sweep: 400 samples from startFreq in steps of stepFreq. Works on the record alone.

// |stop - start| in Hz; RuntimeError(Overflow) when it does not fit.
std::int32_t sweepRange(const Configuration &configuration);

// Widens a range below kMinSweepRange, within ddsMaxFreq and not below 1 Hz. Returns whether it had to: startNotice
// and stopNotice then say what became of the start (may be empty) and the stop. Otherwise both are emptied.
bool correctRange(Configuration &configuration);

// (stop - start) / 400 in Hz, rounded half to even.
std::int32_t stepOfRange(std::int32_t startFreq, std::int32_t stopFreq);

} // namespace calvorn
