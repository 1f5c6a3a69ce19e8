// SPDX-License-Identifier: MIT
#include "server/drivers/adc_reader.h"

namespace calvorn {

int AdcReader::read(const SerialAdcType &type)
{
    frame(type);
    m_pins.wait(type.conversionTime);
    return frame(type);
}

int AdcReader::frame(const SerialAdcType &type)
{
    m_pins.set({{LptLine::AdcClock, false}, {LptLine::AdcSelect, false}});
    m_pins.wait(type.selectToClock);
    int value = 0;
    for (int bit = 0; bit < type.bits; ++bit) {
        value = value << 1 | (m_pins.read(LptLine::AdcOut) ? 1 : 0);
        m_pins.set({{LptLine::AdcClock, true}});
        m_pins.set({{LptLine::AdcClock, false}});
    }
    m_pins.set({{LptLine::AdcSelect, true}});
    return value;
}

} // namespace calvorn
