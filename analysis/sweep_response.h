// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <optional>
#include <vector>

namespace calvorn {

enum class AmplitudeUnit { Volt, Decibel };

struct ResponseSample
{
    double frequency; // Hz
    double amplitude; // volts or dB
};

// The peak and the -3 dB points of a sweep.
struct SweepResponse
{
    double peak = 0.0; // volts or dB
    // Hz; the middle of the plateau, the longest run of adjacent samples with the highest amplitude. If several are
    // equally long, the one at the lowest frequency is used.
    double peakFrequency = 0.0;
    // The frequencies in Hz on both sides of the plateau at which the curve is 3 dB below the peak, interpolated
    // linearly in dB between samples. Nullopt if the curve does not fall that far within the range, if the next sample
    // is below the detector's floor, or if no voltage is above zero.
    std::optional<double> lower;
    std::optional<double> upper;

    std::optional<double> bandwidth() const; // Hz
};

// samples: in sweep order, rising or falling. If there are none, all members are 0 or nullopt.
SweepResponse responseOf(const std::vector<ResponseSample> &samples, AmplitudeUnit unit);

// Returns the response in the units of the configuration's scale.
//
// The response is computed from the counts at full resolution, so every scale gives the same frequencies. If the
// amplitudes do not match the counts, as in a sweep imported from another calibration, the response is computed from
// the amplitudes in the table. Throws RuntimeError(TypeMismatch) if a cell does not contain a number.
SweepResponse responseOf(const SweepTable &table, const Configuration &configuration);

} // namespace calvorn
