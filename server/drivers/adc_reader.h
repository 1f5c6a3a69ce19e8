// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/parallel_pins.h"
#include "server/links/serial_adc.h"

namespace calvorn {

// Reads the serial converter. The caller must have let the previous conversion finish (SerialAdcType's
// conversionTime since the previous call); the settling time of a point is longer than that.
class AdcReader
{
public:
    // The pins must outlive this object.
    explicit AdcReader(ParallelPins &pins)
        : m_pins(pins)
    {
    }

    // The count of the input as it is now: the first frame only samples, the second one, a conversion time
    // later, shows what it sampled. 0..type.counts() - 1.
    int read(const SerialAdcType &type);

private:
    int frame(const SerialAdcType &type);

    ParallelPins &m_pins;
};

} // namespace calvorn
