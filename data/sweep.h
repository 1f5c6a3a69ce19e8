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

// The plan of a sweep: the frequency of row 1 and the distance from row to row.
struct SweepAxis
{
    std::int32_t start = 0; // Hz
    std::int32_t step = 0;  // Hz; negative where the sweep falls

    bool operator==(const SweepAxis &) const = default;
};

// Where the samples of a sweep come from. None: there is no sweep yet, and every amplitude is zero.
enum class SweepOrigin { None, Measured, Imported, Drawn };

// A sweep as numbers, as the cells of the sweep table say them.
struct Sweep
{
    // Index i holds row i + 1.
    using Column = std::array<double, kSweepPoints>;

    // Stands for a cell that holds no number.
    static constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
    static bool isNumber(double value) { return !std::isnan(value); }

    SweepOrigin origin = SweepOrigin::None;
    std::optional<SweepAxis> plan; // nothing where the rows came from elsewhere
    // By which the amplitudes follow from the counts; nothing where they do not, as in a sweep that was imported from
    // another calibration.
    std::optional<DetectorCalibration> detector;
    Column frequencies{}; // Hz
    Column amplitudes{};  // volts or dB, as the scale has it
    Column counts{};      // of the detector

    // Volts of a row at full resolution, not rounded as the cells are. Only with a detector.
    double volts(int row) const { return detector->volts(counts[static_cast<std::size_t>(row - 1)]); }

    // How many samples lie where the law of the detector ends; 0 without a detector and with a linear one.
    int samplesBeyondDetector() const;
};

} // namespace calvorn
