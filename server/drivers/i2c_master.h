// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/parallel_pins.h"

#include <cstdint>
#include <span>

namespace calvorn {

// I2C in standard mode (100 kHz) over two open-collector lines, for a single master. Does not support clock stretching,
// because the clock line cannot be read back.
class I2cMaster
{
public:
    // The pins must outlive this object.
    explicit I2cMaster(ParallelPins &pins)
        : m_pins(pins)
    {
    }

    // Sends START, the bytes and STOP. If a byte is not acknowledged, sends STOP immediately and returns false.
    bool write(std::span<const std::uint8_t> bytes);

private:
    void setAndWait(LptLine line, bool high);
    bool writeByte(std::uint8_t value);

    ParallelPins &m_pins;
};

} // namespace calvorn
