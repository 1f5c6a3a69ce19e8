// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace calvorn {

// A DS1803 dual 256-step potentiometer at address 0x50 (A2..A0 low); powers up at position 0. Supports only write
// transfers: it does not acknowledge a read address.
class I2cPotModel
{
public:
    // Sets the levels that the master drives; high means released.
    void drive(bool scl, bool sda);

    // The level of the data line on the bus.
    bool sda() const { return m_masterSda && !m_pullingLow; }

    // The position of potentiometer 0 or 1.
    std::uint8_t wiper(std::size_t pot) const { return m_wipers[pot]; }

    // Bus traffic: the bytes in the latest transfer, acknowledged or not, its number of complete clock pulses between
    // START and STOP, and the number of STOPs since the model was created.
    const std::vector<std::uint8_t> &bytes() const { return m_bytes; }
    int pulses() const { return m_pulses; }
    int stops() const { return m_stops; }

private:
    void start();
    void rise(bool sda);
    void fall();
    bool takeByte(std::uint8_t value);

    bool m_scl = true;
    bool m_masterSda = true;
    bool m_pullingLow = false;
    bool m_active = false;    // between START and STOP
    bool m_addressed = false; // the transfer addresses this chip
    int m_bit = 0;            // 0..7 data, 8 acknowledge
    bool m_roseInTransfer = false;
    unsigned m_shift = 0;
    std::uint8_t m_command = 0;
    std::vector<std::uint8_t> m_bytes;
    std::array<std::uint8_t, 2> m_wipers{};
    int m_pulses = 0;
    int m_stops = 0;
};

} // namespace calvorn
