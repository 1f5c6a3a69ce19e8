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

// What a sweep says about the device that was measured.
struct SweepResponse
{
    double peak = 0.0; // volts or dB
    // Hz; the middle of the plateau, which is the run of neighbouring samples that all have the highest amplitude. Of
    // several plateaus it is the one with most samples, and of equally long ones that of the lowest frequency.
    double peakFrequency = 0.0;
    // Where the curve is 3 dB below the peak, on either side of the plateau, Hz; interpolated linearly in dB between
    // samples. Empty where it does not fall that far inside the range, where the next sample is below the detector's
    // floor, and where there is no voltage above zero. The lower one is that of the lower frequency.
    std::optional<double> lower;
    std::optional<double> upper;

    std::optional<double> bandwidth() const; // Hz
};

// samples: in the order of the sweep, which may rise or fall. Without samples everything is 0 and empty.
SweepResponse responseOf(const std::vector<ResponseSample> &samples, AmplitudeUnit unit);

// The response in the units of the configuration's scale.
//
// It is computed from the counts at full resolution, so that every scale gives the same frequencies. Only where the
// amplitudes do not follow from the counts, as in a sweep imported from another calibration, it is computed from the
// amplitudes of the table.
// RuntimeError(TypeMismatch) when a cell holds no number.
SweepResponse responseOf(const SweepTable &table, const Configuration &configuration);

} // namespace calvorn
