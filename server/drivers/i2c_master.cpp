// SPDX-License-Identifier: MIT
#include "server/drivers/i2c_master.h"

#include <algorithm>

namespace calvorn {

namespace {
// Standard mode requires 4.7 us low and 4.0 us high.
constexpr std::chrono::microseconds kEdge{5};
} // namespace

bool I2cMaster::write(std::span<const std::uint8_t> bytes)
{
    m_pins.set({{LptLine::I2cData, true}, {LptLine::I2cClock, true}});
    m_pins.wait(kEdge);
    setAndWait(LptLine::I2cData, false);
    setAndWait(LptLine::I2cClock, false);

    const bool acknowledged =
        std::all_of(bytes.begin(), bytes.end(), [this](std::uint8_t byte) { return writeByte(byte); });

    setAndWait(LptLine::I2cData, false);
    setAndWait(LptLine::I2cClock, true);
    setAndWait(LptLine::I2cData, true);
    return acknowledged;
}

bool I2cMaster::writeByte(std::uint8_t value)
{
    for (int bit = 7; bit >= 0; --bit) {
        setAndWait(LptLine::I2cData, (value >> bit & 1) != 0);
        setAndWait(LptLine::I2cClock, true);
        setAndWait(LptLine::I2cClock, false);
    }
    setAndWait(LptLine::I2cData, true);
    setAndWait(LptLine::I2cClock, true);
    const bool acknowledged = !m_pins.read(LptLine::I2cDataBack);
    setAndWait(LptLine::I2cClock, false);
    return acknowledged;
}

void I2cMaster::setAndWait(LptLine line, bool high)
{
    m_pins.set({{line, high}});
    m_pins.wait(kEdge);
}

} // namespace calvorn
