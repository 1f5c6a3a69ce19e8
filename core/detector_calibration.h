// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/detector_law.h"
#include "protocol/devices.h"

namespace calvorn {

// Converts converter counts to volts at the detector's input: detector volts = count × step + offset; the law
// converts detector volts to the input level.
struct DetectorCalibration
{
    float step = 0.0F;   // detector volts per count
    float offset = 0.0F; // detector volts
    DetectorLaw law{};
    int highestCount = kHighestCount10Bit; // as stored in the table
    int lowestCount = 0;                   // as stored in the table

    double detectorVolts(double count) const { return count * static_cast<double>(step) + static_cast<double>(offset); }

    // Returns volts RMS at the input, without the rounding applied to table cells.
    double volts(double count) const { return law.inputVolts(detectorVolts(count)); }

    // Returns the count nearest to these input volts. It is never negative but may exceed the converter's range.
    double countOf(double volts) const;

    // Returns the voltage at or below which the detector cannot detect a signal: half a count from the no-signal end of
    // the range, or the lowest level in a table.
    double floor() const;

    bool operator==(const DetectorCalibration &) const = default;
};

// Returns the effective law: the configured law, or the linear law for a MiniVNA that measures phase, because its
// counts are not a level.
const DetectorLaw &lawInForce(const Configuration &configuration);

// Returns the calibration of the configured interface with the effective law. Only the parallel port supports several
// converters. In "device under test" mode, MiniVNA counts are inverted and range from 1 to kVnaFullScale.
DetectorCalibration detectorOf(const Configuration &configuration);

} // namespace calvorn
