// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/parallel_pins.h"
#include "server/links/serial_adc.h"

namespace calvorn {

// Reads the serial converter. The caller must first let the previous conversion finish (wait for SerialAdcType's
// conversionTime after the previous call); the settling time of a sweep point is always longer than that.
class AdcReader
{
public:
    // The pins must outlive this object.
    explicit AdcReader(ParallelPins &pins)
        : m_pins(pins)
    {
    }

    // Returns the count for the current input, 0..type.counts() - 1. The first frame only samples the input; a second
    // frame, sent one conversion time later, returns that sample.
    int read(const SerialAdcType &type);

private:
    int frame(const SerialAdcType &type);

    ParallelPins &m_pins;
};

} // namespace calvorn
