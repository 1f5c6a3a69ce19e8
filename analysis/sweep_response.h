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

// Peak and -3 dB points of a sweep.
struct SweepResponse
{
    double peak = 0.0; // volts or dB
    // Hz; the middle of the plateau, the run of adjacent samples with the highest amplitude. The longest plateau is
    // used, or of equally long ones the one at the lowest frequency.
    double peakFrequency = 0.0;
    // The frequencies in Hz at which the curve is 3 dB below the peak, on both sides of the plateau, interpolated
    // linearly in dB between samples. Nullopt if the curve does not fall that far inside the range, if the next
    // sample is below the detector's floor, or if no voltage is above zero. `lower` is the lower frequency.
    std::optional<double> lower;
    std::optional<double> upper;

    std::optional<double> bandwidth() const; // Hz
};

// samples: in sweep order, rising or falling. Without samples all members are 0 or nullopt.
SweepResponse responseOf(const std::vector<ResponseSample> &samples, AmplitudeUnit unit);

// Returns the response in the units of the configuration's scale.
//
// It is computed from the counts at full resolution, so every scale gives the same frequencies. If the amplitudes do
// not follow from the counts, as in a sweep imported from another calibration, it is computed from the amplitudes in
// the table. Throws RuntimeError(TypeMismatch) if a cell holds no number.
SweepResponse responseOf(const SweepTable &table, const Configuration &configuration);

} // namespace calvorn
