// SPDX-License-Identifier: MIT
#include "server/boards/i2c_pot_model.h"

namespace calvorn {

namespace {
constexpr std::uint8_t kAddress = 0x50;
constexpr std::uint8_t kWritePot0 = 0xA9;
constexpr std::uint8_t kWritePot1 = 0xAA;
constexpr std::uint8_t kWriteBoth = 0xAF;
} // namespace

void I2cPotModel::drive(bool scl, bool sda)
{
    const bool clockHeld = m_scl && scl;
    if (clockHeld && m_masterSda && !sda) {
        start();
    } else if (clockHeld && !m_masterSda && sda && m_active) {
        m_active = false;
        m_pullingLow = false;
        ++m_stops;
    } else if (m_active && !m_scl && scl) {
        rise(sda);
    } else if (m_active && m_scl && !scl) {
        fall();
    }
    m_scl = scl;
    m_masterSda = sda;
}

void I2cPotModel::start()
{
    m_active = true;
    m_addressed = false;
    m_pullingLow = false;
    m_roseInTransfer = false;
    m_bit = 0;
    m_shift = 0;
    m_command = 0;
    m_pulses = 0;
    m_bytes.clear();
}

void I2cPotModel::rise(bool sda)
{
    m_roseInTransfer = true;
    if (m_bit < 8)
        m_shift = (m_shift << 1 | (sda ? 1U : 0U)) & 0xFFU;
}

void I2cPotModel::fall()
{
    // The first falling edge is part of the START condition, not of a clock pulse.
    if (!m_roseInTransfer)
        return;
    m_roseInTransfer = false;
    ++m_pulses;
    ++m_bit;
    if (m_bit == 8) {
        m_pullingLow = takeByte(static_cast<std::uint8_t>(m_shift));
    } else if (m_bit == 9) {
        m_pullingLow = false;
        m_bit = 0;
        m_shift = 0;
    }
}

bool I2cPotModel::takeByte(std::uint8_t value)
{
    m_bytes.push_back(value);
    if (m_bytes.size() == 1) {
        m_addressed = value == kAddress;
        return m_addressed;
    }
    if (!m_addressed)
        return false;
    if (m_bytes.size() == 2) {
        m_command = value;
        return value == kWritePot0 || value == kWritePot1 || value == kWriteBoth;
    }
    if (m_command == kWritePot0 || m_command == kWriteBoth)
        m_wipers[0] = value;
    if (m_command == kWritePot1 || m_command == kWriteBoth)
        m_wipers[1] = value;
    return m_command != 0;
}

} // namespace calvorn
