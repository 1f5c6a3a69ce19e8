// SPDX-License-Identifier: MIT
#include "server/boards/ad985x_model.h"

namespace calvorn {

namespace {
constexpr int kBits = 40;
constexpr int kBytes = 5;
constexpr unsigned kBusMask = 0x7F; // D7 is the data line
constexpr unsigned kSerialPattern = 0x03;
constexpr unsigned kModeMask = 0x07;
constexpr unsigned kTimesSix = 0x01;
constexpr unsigned kForbidden = 0x02;
constexpr unsigned kPowerDown = 0x04;
} // namespace

Ad985xModel::Ad985xModel(DdsChip chip, double referenceHz)
    : m_chip(chip)
    , m_referenceHz(referenceHz)
{
}

void Ad985xModel::onReset()
{
    m_serial = false;
    m_count = 0;
    m_shift = 0;
    m_bytes = {};
    m_word = 0;
    generate(0, m_referenceHz, true);
}

void Ad985xModel::onClock(const DdsLines &lines)
{
    ++m_count;
    if (m_serial) {
        m_shift = m_shift >> 1 | (lines.data ? std::uint64_t{1} << (kBits - 1) : 0U);
        return;
    }
    if (m_count > kBytes)
        flag(DdsViolation::WrongBitCount);
    else
        m_bytes[static_cast<std::size_t>(m_count - 1)] =
            static_cast<std::uint8_t>((lines.bus & kBusMask) | (lines.data ? 0x80U : 0U));
}

void Ad985xModel::onUpdate()
{
    if (m_serial)
        updateSerial();
    else
        updateParallel();
    m_count = 0;
}

void Ad985xModel::updateParallel()
{
    if (m_count == 1 && (m_bytes[0] & kModeMask) == kSerialPattern) {
        m_serial = true;
        m_shift = 0;
        return;
    }
    if (m_count != kBytes)
        flag(DdsViolation::WrongBitCount);
    const std::uint32_t word = static_cast<std::uint32_t>(m_bytes[1]) << 24 |
                               static_cast<std::uint32_t>(m_bytes[2]) << 16 |
                               static_cast<std::uint32_t>(m_bytes[3]) << 8 | m_bytes[4];
    activate(m_bytes[0], word);
}

void Ad985xModel::updateSerial()
{
    if (m_count != 0 && m_count != kBits)
        flag(DdsViolation::WrongBitCount);
    activate(static_cast<std::uint8_t>(m_shift >> 32), static_cast<std::uint32_t>(m_shift));
}

void Ad985xModel::activate(std::uint8_t control, std::uint32_t word)
{
    m_word = word;
    if (control & kForbidden)
        flag(DdsViolation::ForbiddenControl);
    if (m_chip == DdsChip::Ad9850 && (control & (kTimesSix | kForbidden)))
        flag(DdsViolation::FactoryBit);
    const bool timesSix = m_chip == DdsChip::Ad9851 && (control & kTimesSix);
    generate(word, timesSix ? 6.0 * m_referenceHz : m_referenceHz, !(control & kPowerDown));
}

} // namespace calvorn
