// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_calibration.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

namespace calvorn {

// A sweep plan: the frequency of row 1 and the step between rows.
struct SweepAxis
{
    std::int32_t start = 0; // Hz
    std::int32_t step = 0;  // Hz; negative for a descending sweep

    bool operator==(const SweepAxis &) const = default;
};

// The origin of a sweep's samples. None: no sweep yet, all amplitudes are zero.
enum class SweepOrigin { None, Measured, Imported, Drawn };

// A sweep as numbers, parsed from the sweep table's cells.
struct Sweep
{
    // Index i holds row i + 1.
    using Column = std::array<double, kSweepPoints>;

    // Represents a cell without a number.
    static constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
    static bool isNumber(double value) { return !std::isnan(value); }

    SweepOrigin origin = SweepOrigin::None;
    std::optional<SweepAxis> plan; // nullopt if the rows were imported
    // The calibration that converts the counts to the amplitudes, or nullopt if it is unknown, for example if the sweep
    // was imported and measured with another calibration.
    std::optional<DetectorCalibration> detector;
    Column frequencies{}; // Hz
    Column amplitudes{};  // volts or dB, depending on the scale
    Column counts{};      // detector counts

    // Returns a row's volts at full resolution, without the rounding applied to cells. Requires a detector.
    double volts(int row) const { return detector->volts(counts[static_cast<std::size_t>(row - 1)]); }

    // Returns the number of samples beyond the ends of the detector's law; 0 without a detector or for a linear law.
    int samplesBeyondDetector() const;
};

} // namespace calvorn
