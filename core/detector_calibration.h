// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "core/detector_law.h"
#include "protocol/devices.h"

namespace calvorn {

// From counts of the converter to volts at the detector's input: count × step + offset are the volts of the detector,
// and its law makes the level of them.
struct DetectorCalibration
{
    float step = 0.0F;   // volts of the detector per count
    float offset = 0.0F; // volts of the detector
    DetectorLaw law{};
    int highestCount = kHighestCount10Bit; // as the table has it
    int lowestCount = 0;                   // the same

    double detectorVolts(double count) const { return count * static_cast<double>(step) + static_cast<double>(offset); }

    // Volts RMS at the input, not rounded as cells are.
    double volts(double count) const { return law.inputVolts(detectorVolts(count)); }

    // The count that comes next to these volts at the input, 0 or more; it may be above any that the converter gives.
    double countOf(double volts) const;

    // At or below these volts the detector has seen nothing: those of half a count above the end where it is silent, or
    // of the lowest level in a table.
    double floor() const;

    bool operator==(const DetectorCalibration &) const = default;
};

// The configured law, or the linear one where the counts are no level: a MiniVNA that measures the phase.
const DetectorLaw &lawInForce(const Configuration &configuration);

// Of the interface that is configured, with the law in force. Only the parallel port has a choice of converters. The
// counts that a MiniVNA takes of a device under test are turned over, from 1 to kVnaFullScale.
DetectorCalibration detectorOf(const Configuration &configuration);

} // namespace calvorn
