// SPDX-License-Identifier: MIT
#include "server/boards/ad9951_model.h"

namespace calvorn {

namespace {
constexpr int kInstructionBits = 8;
constexpr std::array<int, 6> kRegisterBits = {32, 24, 16, 8, 32, 16}; // CFR1 CFR2 ASF ARR FTW0 POW0
constexpr std::size_t kCfr1 = 0;
constexpr std::size_t kCfr2 = 1;
constexpr std::size_t kFtw0 = 4;
constexpr std::uint32_t kReadInstruction = 0x80;
constexpr std::uint32_t kAddressMask = 0x1F;
constexpr std::uint32_t kLsbFirst = 1U << 8;
constexpr std::uint32_t kPowerDown = 1U << 7 | 1U << 5 | 1U << 4; // digital part, DAC, clock input
} // namespace

Ad9951Model::Ad9951Model(double referenceHz)
    : m_referenceHz(referenceHz)
{
}

std::uint32_t Ad9951Model::active(std::uint8_t address) const
{
    return address < kRegisters ? m_active[address] : 0U;
}

int Ad9951Model::multiplier() const
{
    const int written = static_cast<int>(m_active[kCfr2] >> 3 & 0x1F);
    return written >= 4 && written <= 20 ? written : 1;
}

void Ad9951Model::onReset()
{
    m_buffers = {};
    m_active = {};
    m_inRegister = false;
    m_bitsLeft = kInstructionBits;
    m_shift = 0;
    generate(0, m_referenceHz, true);
}

void Ad9951Model::onClock(const DdsLines &lines)
{
    m_shift = m_shift << 1 | (lines.data ? 1U : 0U);
    if (--m_bitsLeft > 0)
        return;
    if (!m_inRegister) {
        takeInstruction(static_cast<std::uint8_t>(m_shift));
    } else {
        m_buffers[m_address] = m_shift;
        // The two serial-port bits of CFR1 take effect without an update.
        if (m_address == kCfr1 && (m_shift & kLsbFirst))
            flag(DdsViolation::Unsupported);
        m_inRegister = false;
        m_bitsLeft = kInstructionBits;
    }
    m_shift = 0;
}

void Ad9951Model::takeInstruction(std::uint8_t instruction)
{
    const std::size_t address = instruction & kAddressMask;
    m_bitsLeft = kInstructionBits;
    if ((instruction & kReadInstruction) || address >= kRegisters) {
        flag(DdsViolation::LostSync);
        return;
    }
    m_address = address;
    m_inRegister = true;
    m_bitsLeft = kRegisterBits[address];
}

void Ad9951Model::onUpdate()
{
    if (m_inRegister || m_bitsLeft != kInstructionBits)
        flag(DdsViolation::LostSync);
    m_active = m_buffers;
    generate(m_active[kFtw0], m_referenceHz * multiplier(), !(m_active[kCfr1] & kPowerDown));
}

} // namespace calvorn
